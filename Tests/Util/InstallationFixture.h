// An installation of its own, without texts for messages, so that the log shows their numbers.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

struct InstallationTest : testing::Test {
    InstallationTest() {
        std::filesystem::create_directory(m_root + "/bin"),
            std::filesystem::create_directory(m_root + "/configuration");
        brindle_platform::setProgramDirectory((m_root + "/bin").c_str());
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            m_log += std::to_string(record.level) + record.text.c_str() + ";";
        });
    }
    ~InstallationTest() override {
        brindle_platform::setLogSink(nullptr);
        std::filesystem::remove_all(m_root);
    }
    void Write(const std::string& content, const std::string& file = "/configuration/VKEConfig.xml") const {
        std::ofstream(m_root + file) << content;
    }

    const std::string m_root = mkdtemp((testing::TempDir() + "brindle-XXXXXX").data());
    std::string m_log;
};
