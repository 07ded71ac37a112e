// The performance file as a stream of bytes: a new file, never one that stands already, and after its first failure one
// that swallows what is written. One thread at a time.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

class QE_PerfStream {
public:
    // Creates the stem with the extension behind it; while the name is taken, with 1, 2 and so on in between. Any other
    // failure leaves a stream that swallows.
    QE_PerfStream(std::string_view stem, std::string_view extension);

    // The text is in the file when this returns, as far as the file takes it.
    void Write(std::string_view text) noexcept;

    // Whether everything so far was written.
    bool IsGood() const noexcept { return m_file != nullptr; }

    const std::string& GetPath() const noexcept { return m_path; }

private:
    struct Closer {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    std::string m_path;
    std::unique_ptr<std::FILE, Closer> m_file;
};
