// An installation of its own, without texts for messages, so that the log shows their numbers.
#pragma once

#include <gtest/gtest.h>

#include "Support/Directory.h"

struct InstallationTest : testing::Test, brindle_test::Directory {
    InstallationTest() {
        std::filesystem::create_directory("bin");
        brindle_platform::setProgramDirectory(Path("bin"));
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            m_log += std::to_string(record.level) + record.text.c_str() + ";";
        });
    }

    const std::string m_file = "configuration/VKEConfig.xml";
    std::string m_log;
};
