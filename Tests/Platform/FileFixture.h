// A directory for files, and a disk that is full.
#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "ZBLCore/I18NString.h"

class FileFixture : public testing::Test {
protected:
    FileFixture() : m_directory(mkdtemp((testing::TempDir() + "brindle-XXXXXX").data())) {}
    ~FileFixture() override { std::filesystem::remove_all(m_directory); }

    I18NString Path(const std::string& name) const { return I18NString(std::string_view(m_directory + "/" + name)); }
    I18NString Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_directory + "/" + name, std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Bytes(const std::string& name) const {
        std::ifstream stream(m_directory + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    // What the call answers while no file can grow beyond `size` bytes.
    static auto OnFullDisk(rlim_t size, const auto& call) {
        const rlimit full{size, RLIM_INFINITY}, unlimited{RLIM_INFINITY, RLIM_INFINITY};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &full);
        const auto answer = call();
        setrlimit(RLIMIT_FSIZE, &unlimited);
        return answer;
    }

    std::string m_directory;
};
