// The directory in which a test works: made for it, and removed with all that is in it. Behind the test all hooks are
// as they were at first.
//
//     struct CsvFile : testing::Test, brindle_test::Directory {};
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "PlatformHooks.h"

#include "Support/TemporaryDirectory.h"

namespace brindle_test {

struct Directory {
    Directory() { std::filesystem::current_path(m_directory); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    ~Directory() {
        using namespace brindle_platform;
        setLogSink(nullptr), setIndicationSink(nullptr), clearLogLevels(), clearLoggerThresholds(), clearOverrides();
        setPerformanceCounter(nullptr), setMillisClock(nullptr), setTimeStamp(nullptr), setProcessId({});
        setPerformanceCounterPresent(true), setDefaultEncoding(nullptr), setUserConfigurationFile("");
        setProgramDirectory(""), std::filesystem::current_path("/");
    }

    // Of a file in the directory, unless the name is a full path.
    std::filesystem::path FullPath(const std::string& name) const { return std::filesystem::path(m_directory) / name; }
    I18NString Path(const std::string& name) const { return FullPath(name).c_str(); }
    I18NString Write(const std::string& name, const std::string& bytes) const {
        return m_made.Write(name, bytes).c_str();
    }
    std::string Bytes(const std::string& name) const {
        std::ifstream stream(FullPath(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    TemporaryDirectory m_made;
    const std::string& m_directory = m_made.Path();
};

} // namespace brindle_test
