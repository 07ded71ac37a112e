// An installation of its own in which there are no texts for messages, so that the log shows their numbers.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

class InstallationTest : public testing::Test {
protected:
    InstallationTest() {
        if (mkdtemp(m_root.data()) == nullptr) std::abort();
        for (const char* const folder : {"/bin", "/configuration"})
            std::filesystem::create_directory(m_root + folder);
        brindle_platform::setProgramDirectory((m_root + "/bin").c_str());
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            m_log += std::to_string(record.level) + std::string(record.text.bytes()) + ";";
            if (m_whileLogging) m_whileLogging();
        });
    }
    ~InstallationTest() override {
        brindle_platform::setLogSink(nullptr);
        brindle_platform::setProgramDirectory("");
        std::filesystem::remove_all(m_root);
    }
    void Write(const std::string& content, const std::string& file = "/configuration/VKEConfig.xml") const {
        std::ofstream(m_root + file) << content;
    }
    void WriteMaps(const std::string& maps, const std::string& file = "/configuration/VKEConfig.xml") const {
        Write("<c><section name='ParameterMaps'>" + maps + "</section></c>", file);
    }

    std::string m_root = testing::TempDir() + "brindle-XXXXXX", m_log;
    std::function<void()> m_whileLogging;
};
