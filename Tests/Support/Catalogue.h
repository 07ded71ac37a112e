// A started function catalogue over files that a test writes into a directory of its own:
//
//     TestCatalogue catalogue;
//     catalogue.Fill("<function><id>abs</id></function>", {{"en-us", R"(<string id="abs">Absolute</string>)"}});
//
// Files may be written until the catalogue is first used. Log records up to level 7 are collected; a text by number
// shows as "QE 0x35d90b2c [parameter]...".
#pragma once

#include "AQF_I_FunctionNode.h"
#include "AQF_Initialize.h"

#include "Support/Directory.h"
#include "Support/LogLines.h"

namespace brindle_test {

class TestCatalogue {
public:
    // Locales with their `string` elements.
    using Texts = std::vector<std::pair<std::string, std::string>>;

    TestCatalogue() {
        std::filesystem::create_directories(Folder());
        brindle_platform::setProgramDirectory(m_home.Path("bin"));
        AQF_Initialize("test");
        TakeLog(); // the start's own records
        for (const char* const entry : {"QueryEngine", "FDS"})
            brindle_platform::setLogLevel(entry, 7);
    }
    ~TestCatalogue() { AQF_Terminate("test"); }

    std::string Folder() const { return m_home.m_directory + "/configuration/functions"; }
    void RemoveFiles() const { std::filesystem::remove_all(m_home.m_directory); }
    void Write(const std::string& file, const std::string& content) const {
        m_home.Write(Folder() + "/" + file, content);
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
    Lines TakeLog() { return m_log.Take(); }

private:
    const Directory m_home;
    LogLines m_log;
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
