// The streams are files, so that neither side ever waits for the other.
#include "Support/Process.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include <sys/wait.h>
#include <unistd.h>

std::ostream& operator<<(std::ostream& stream, const ProcessResult& result) {
    return stream << "status " << result.status << "\n[" << result.output << "]\n[" << result.errors << "]";
}

ProcessResult RunProcess(const ProcessRequest& request) {
    const std::string streams = std::filesystem::temp_directory_path() / ("brindle-" + std::to_string(getpid()));
    const std::string output = request.outputFile.empty() ? streams + ".out" : request.outputFile;
    std::ofstream(streams + ".in", std::ios::binary) << request.input;
    std::string line = "exec env ";
    for (const auto* const words : {&request.settings, &request.arguments})
        for (const std::string& word : *words)
            line += "'" + std::regex_replace(word, std::regex("'"), R"('\'')") + "' ";
    const int ended = std::system((line + "<" + streams + ".in >" + output + " 2>" + streams + ".err").c_str());

    const auto taken = [](const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(stream), {}};
        std::filesystem::remove(path);
        return content;
    };
    taken(streams + ".in");
    return {WIFEXITED(ended) ? WEXITSTATUS(ended) : -1, request.outputFile.empty() ? taken(output) : "",
            taken(streams + ".err")};
}
