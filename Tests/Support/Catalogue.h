// A started function catalogue over files that a test writes into a directory of its own:
//
//     TestCatalogue catalogue;
//     catalogue.Fill("<function><id>abs</id></function>", {{"en-us", R"(<string id="abs">Absolute</string>)"}});
//
// Files may be written until the catalogue is first used. Log records up to level 7 are collected as lines "entry level
// text"; a text by number shows as "QE 0x35d90b2c [parameter]...".
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "PlatformHooks.h"

#include "AQF_I_FunctionNode.h"
#include "AQF_Initialize.h"

namespace brindle_test {

class TestCatalogue {
public:
    // Locales with their `string` elements.
    using Texts = std::vector<std::pair<std::string, std::string>>;
    using Lines = std::vector<std::string>;

    TestCatalogue() : m_home(std::filesystem::temp_directory_path() / "brindle-XXXXXX") {
        if (mkdtemp(m_home.data()) == nullptr) throw std::runtime_error("no directory");
        std::filesystem::create_directories(Folder());
        brindle_platform::setProgramDirectory((m_home + "/bin").c_str());
        AQF_Initialize("test");
        // Set late, so that the start's own records aren't among the lines.
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            m_log.push_back((record.name + " ").c_str() + std::to_string(record.level) + " " + record.text.c_str());
        });
        for (const char* const entry : {"QueryEngine", "FDS"})
            brindle_platform::setLogLevel(entry, 7);
    }
    ~TestCatalogue() {
        brindle_platform::setLogSink(nullptr);
        brindle_platform::clearLogLevels();
        AQF_Terminate("test");
        brindle_platform::setProgramDirectory("");
        RemoveFiles();
    }
    TestCatalogue(const TestCatalogue&) = delete;
    TestCatalogue& operator=(const TestCatalogue&) = delete;

    std::string Folder() const { return m_home + "/configuration/functions"; }
    void RemoveFiles() const { std::filesystem::remove_all(m_home); }

    void Write(const std::string& file, const std::string& content) const {
        std::ofstream(Folder() + "/" + file) << content;
    }

    // The main file list with one definition file and one string file for each locale.
    void Fill(const std::string& definition, const Texts& texts = {{"en-us", ""}}) const {
        std::string list = "<files><definition>functions.xml</definition>";
        Write("functions.xml", "<functionsRoot>" + definition + "</functionsRoot>");
        for (const auto& [locale, strings] : texts) {
            list += "<description><language>" + locale + "</language><file>" + locale + ".xml</file></description>";
            Write(locale + ".xml", "<texts><component><section>" + strings + "</section></component></texts>");
        }
        Write("FileList.xml", list + "</files>");
    }

    // What was logged since the last call.
    Lines TakeLog() { return std::exchange(m_log, {}); }

private:
    std::string m_home;
    Lines m_log;
};

// The ids, a blank between two.
inline std::string Ids(const std::vector<AQF_I_FunctionNode*>& nodes) {
    std::string line;
    for (AQF_I_FunctionNode* const node : nodes)
        line += (line.empty() ? "" : " ") + std::string(node->GetId().bytes());
    return line;
}

// The visible tree below the node: "folder(function other) function".
inline std::string TreeOf(AQF_I_FunctionNode& node) {
    std::vector<AQF_I_FunctionNode*> children;
    node.GetChildren(children);
    std::string line;
    for (AQF_I_FunctionNode* const child : children) {
        const std::string below = TreeOf(*child);
        line += (line.empty() ? "" : " ") + Ids({child}) + (below.empty() ? "" : "(" + below + ")");
    }
    return line;
}

} // namespace brindle_test
