// The streams are unnamed files, so that neither side ever waits for the other.
#include "Support/Process.h"

#include <cstdio>
#include <memory>
#include <stdexcept>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using OwnedFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

OwnedFile Owned(std::FILE* file) {
    if (file == nullptr) throw std::runtime_error("no file for the streams of a process");
    return {file, std::fclose};
}

std::string ContentOf(std::FILE* file) {
    std::string content;
    char buffer[4096];
    std::rewind(file);
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file))
        content.append(buffer, count);
    return content;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const ProcessResult& result) {
    return stream << "status " << result.status << "\n[" << result.output << "]\n[" << result.errors << "]";
}

ProcessResult RunProcess(const ProcessRequest& request) {
    const OwnedFile input = Owned(std::tmpfile());
    const OwnedFile output =
        Owned(request.outputFile.empty() ? std::tmpfile() : std::fopen(request.outputFile.c_str(), "wb"));
    const OwnedFile errors = Owned(std::tmpfile());
    std::fwrite(request.input.data(), 1, request.input.size(), input.get());
    std::rewind(input.get());

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(output.get()), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
    std::vector<std::string> arguments = request.arguments, settings = request.settings;
    for (char** inherited = environ; *inherited != nullptr; ++inherited)
        settings.emplace_back(*inherited);
    pid_t process = -1;
    const int failed = posix_spawn(&process, arguments.front().c_str(), &actions, nullptr, Pointers(arguments).data(),
                                   Pointers(settings).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) throw std::runtime_error("cannot start " + arguments.front());

    int ended = 0;
    waitpid(process, &ended, 0);
    const int status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return {status, request.outputFile.empty() ? ContentOf(output.get()) : "", ContentOf(errors.get())};
}
