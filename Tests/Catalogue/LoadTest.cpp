// What the catalogue makes of its files, and when it starts, loads and ends.
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "ABrindle.h"
#include "AQF_I_FunctionDLL.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQF_I_FunctionParameter.h"

#include "Support/Catalogue.h"
#include "Support/FailureCheck.h"

namespace {

using namespace brindle_test;
using Definition = std::unique_ptr<AQF_I_FunctionDefinition>;
using Lines = TestCatalogue::Lines;
using Texts = std::vector<I18NString>;

Definition Create(const char* locale = "en-us") { return Definition(AQF_I_FunctionDefinition::Create(locale)); }
std::string Tree() { return TreeOf(*Create()->GetRootNode()); }

std::string In(const std::string& tag, const std::string& content) {
    return "<" + tag + ">" + content + "</" + tag + ">";
}
std::string Entry(const std::string& content, const std::string& kind = "function", const std::string& id = "f") {
    return In(kind, In("id", id) + content);
}
std::string String(const std::string& id, const std::string& text) {
    return "<string id='" + id + "'>" + text + "</string>";
}
std::string Strings(const std::string& strings) { return In("component", In("section", strings)); }

std::string Named(AQF_I_FunctionDefinition& definition, const char* name) {
    std::vector<AQF_I_FunctionNode*> found;
    definition.GetFunctionsByName(name, found);
    return Ids(found);
}

struct Loaded {
    explicit Loaded(const std::string& definitions, const TestCatalogue::Texts& texts = {{"en-us", ""}}) {
        catalogue.Fill(definitions, texts);
        definition = Create();
        log = catalogue.TakeLog();
    }
    TestCatalogue catalogue;
    Definition definition;
    Lines log;
};

// What the node answers: canonical, its expression, return type, format, library, the properties "id", "hide" and
// "other", then each parameter as "(type min max null)".
std::string Described(AQF_I_FunctionNode* node) {
    if (node == nullptr) return "none";
    I18NString line = node->GetCanonical() + "," + node->GetCanonicalExpression() + "," + node->GetReturnType() + "," +
                      node->GetFormatType() + "," + (node->GetDLL() ? node->GetDLL()->GetName() : "");
    for (const char* const key : {"id", "hide", "other"})
        line += "," + node->GetProperty(key);
    std::vector<AQF_I_FunctionParameter*> parameters;
    node->GetParameters(parameters);
    for (AQF_I_FunctionParameter* const parameter : parameters) {
        line += " (" + parameter->GetType();
        for (const int occurs : {parameter->GetMinOccurs(), parameter->GetMaxOccurs()})
            line.appendUtf8(" " + std::to_string(occurs));
        line += parameter->GetIsNullable() ? " null)" : ")";
        delete parameter;
    }
    return std::string(line.bytes());
}

TEST(CatalogueEntry, EachElementHasItsEffectInAnyOrder) {
    const std::pair<const char*, const char*> rows[] = {
        {"<canonical>a</canonical><canonical>b</canonical><dll>x</dll><dll>y</dll>", "b,,,,y,f,,"},
        {"<format>a</format><formatType>b</formatType>", ",,,b,,f,,"},
        {"<formatType>a</formatType><returnType>r</returnType><format>b</format>", ",,r,b,,f,,"},
        {"<canonicalExpression>e</canonicalExpression><hide>1</hide>", ",e,,,,f,1,"},
        {"<other>a</other><other>b</other><id>g</id><group>x</group>", ",,,,,g,,b"},
        // The first node decides what counts as the text.
        {"<other>a<b>c</b><![CDATA[<d>]]>e</other>", ",,,,,f,,a<d>e"},
        {"<other><![CDATA[<d>]]>e</other>", ",,,,,f,,<d>"},
        {"<other><b/>a</other>", ",,,,,f,,"},
        // Parameters.
        {"<parameterType>a</parameterType><parameter/>", ",,,,,f,, (a 1 1 null) ( 1 1 null)"},
        {"<parameter><type>a</type><type>b</type><optional>true</optional></parameter>", ",,,,,f,, (a | b 0 1 null)"},
        {"<parameter><type/><type>b</type><nullable>yes</nullable></parameter>", ",,,,,f,, ( | b 1 1)"},
        {"<parameter><type>set</type><nullable>true</nullable></parameter>", ",,,,,f,, (set 1 1 null)"},
        {"<parameter><minOccurs>0</minOccurs><optional>no</optional></parameter>", ",,,,,f,, ( 1 1 null)"},
        {"<parameter><optional>no</optional><minOccurs>0</minOccurs></parameter>", ",,,,,f,, ( 0 1 null)"},
        {"<parameter><maxOccurs>99999999999</maxOccurs></parameter>", ",,,,,f,, ( 1 2147483647 null)"},
        {"<parameter optional='false'><minOccurs>0</minOccurs></parameter>", ",,,,,f,, ( 1 1 null)"},
        {"<parameter type='b' optional='true'><type>a</type></parameter>", ",,,,,f,, (b 0 1 null)"},
        {"<parameter type='' optional=''><type>a</type></parameter>", ",,,,,f,, (a 1 1 null)"},
    };
    for (const auto& [content, expected] : rows)
        EXPECT_EQ(Described(Loaded(Entry(content)).definition->GetFunctionById("f")), expected) << content;
}

TEST(CatalogueEntry, ARuleNeedsAValueAndASelector) {
    // The level with the interface "OR", and the ordinals of the rules that are dropped.
    const std::tuple<const char*, int, std::string> rows[] = {
        {"<other/><rule/><rule><interface>OR</interface><value>limited</value></rule>", 2, "1"},
        {"<rule><interface>SS</interface><interface>OR</interface><value>restricted</value></rule>", 1, ""},
        {"<rule><value>no</value><value>ok</value><value>limited</value><default/></rule>", 2, ""},
        {"<rule><value>limited</value><value>no</value><default/></rule>", 3, "1"},
        {"<rule><default/><interface/><value>limited</value></rule>", 3, "1"},
        {"<rule><interface/><default/><value>limited</value></rule>", 2, ""},
        {"<rule><value>ok</value></rule><rule><datasourceQueryType/><value>ok</value></rule>", 3, "12"},
        {"<rule/></qosLevel><qosLevel><rule/>", 3, "11"},
    };
    for (const auto& [rules, level, dropped] : rows) {
        const Loaded loaded(Entry(In("qosLevel", rules)));
        Lines expected;
        for (const char ordinal : dropped)
            expected.push_back(std::string("QueryEngine 7 QE 0x35de6af7 [") + ordinal + "] [" +
                               loaded.catalogue.Folder() + "/functions.xml] [f]");
        EXPECT_EQ(loaded.log, expected) << rules;
        Texts interfaces;
        loaded.definition->GetInterfaces(interfaces);
        EXPECT_EQ(interfaces.empty(), std::string(rules).find("<interface>") == std::string::npos) << rules;
        loaded.definition->AddInterface("or");
        EXPECT_EQ(loaded.definition->GetFunctionById("f")->GetQosLevel(), level) << rules;
    }
}

TEST(CatalogueTree, FilesFillOneTreeAndTheFirstEntryOfAnIdCounts) {
    TestCatalogue catalogue;
    const std::string unread = In("functionsRoot", Entry("", "function", "unread"));
    const std::string first = In("group", "<id>g</id><name>no</name>" + Entry("")) + Entry("", "operation", "g") +
                              In("group", Entry("", "literal", "l")) + Entry("", "function", "") + "<function/>";
    const std::string second =
        In("group", "<id>g</id>" + Entry("", "summary", "s") + Entry("<dll>x</dll><vendor>late</vendor>") +
                        In("group", "<id>g</id>" + Entry("", "operator", "o"))) +
        In("group", "<vendor>v</vendor>" + Entry("<vendor>w</vendor><vendor>v</vendor>", "literal", "m"));
    catalogue.Write("a.xml", In("a", In("functionsRoot", "<id>r</id>" + first) + unread));
    catalogue.Write("b.xml", In("functionsRoot", second));
    catalogue.Write("none.xml", In("functions", Entry("")));
    catalogue.Write("empty.xml", "");
    std::string list = "<definition/>";
    for (const char* const file : {"a.xml", "none.xml", "empty.xml", "missing.xml", "b.xml", "a.xml"})
        list += In("x", In("definition", file));
    catalogue.Write("FileList.xml", In("l", list));
    EXPECT_EQ(Tree(), "g(g(o) f s) g (l m)");
    const Definition definition = Create();
    EXPECT_EQ(definition->GetRootNode()->GetId(), "/");
    EXPECT_EQ(definition->GetFunctionById("g")->GetType(), FT_operation);
    EXPECT_EQ(definition->GetFunctionById("f")->GetDLL(), nullptr);
    Texts vendors, names;
    definition->GetVendors(vendors, names);
    EXPECT_EQ(vendors, (Texts{"v", "w"}));
}

TEST(CatalogueFileLists, FurtherListsComeBehindTheMainOneByName) {
    TestCatalogue catalogue;
    const auto list = [&](const std::string& name, const std::string& id, const std::string& further = "") {
        catalogue.Write(id + ".xml", In("functionsRoot", Entry("", "operation", id)));
        catalogue.Write(name, In("l", In("definition", id + ".xml") + further));
    };
    const auto texts = [](const char* language, const char* file) {
        return In("description", In("x", In("language", language)) + "<file/>" + In("file", file));
    };
    list("FileListb.xml", "c", texts("en-us", "second.xml"));
    list("FILELISTa.XML", "b", texts(" en_US.UTF-8", "first.xml") + "<description/>");
    list("FileList.xml", "a", texts("en-us", "missing.xml"));
    for (const char* const other : {"filelist.xml", "xFileList.xml", "FileList.xml.bak"})
        list(other, "no");
    catalogue.Write("first.xml",
                    In("t", Strings(String("a", "1") + In("x", String("b", "no")) + In("section", String("b", "2"))) +
                                In("section", String("c", "no"))));
    catalogue.Write("second.xml", In("t", Strings(String("c", "<x>no</x>3"))));
    EXPECT_EQ(Tree(), "a b c");
    const Definition definition = Create();
    Texts locales;
    definition->GetLocales(locales);
    EXPECT_EQ(locales, (Texts{"", "en-us"}));
    EXPECT_EQ(Named(*definition, "1") + Named(*definition, "2") + Named(*definition, "3"), "abc");
    EXPECT_EQ(catalogue.TakeLog(), Lines());
}

TEST(CatalogueNames, KindLibraryAndCanonicalDecideWhoSharesAName) {
    const char *const function = "function", *const none = "", *const text = "<canonical>c</canonical>",
                      *const library = "<dll>l</dll>";
    struct Row {
        const char *kind, *content, *otherKind, *otherContent, *found, *log;
    };
    const Row rows[] = {
        {function, text, function, text, "f g", ""},
        {function, text, function, none, "f", "QueryEngine 3 QE 0x35d19bfb [g] [größe] [f] [GrÖße] [c]"},
        {function, library, function, library, "f", "FDS 3 QE 0x35db32ff [FT_function] [g] [größe]"},
        {function, library, function, text, "f g", ""},
        {function, text, function, library, "f g", ""},
        {function, none, "summary", none, "f", "QueryEngine 7 QE 0x35d0cb52 [3] [g] [größe] [2] [f] [GrÖße]"},
        {"summary", none, "summary", text, "f g", ""},
        {"operator", none, function, text, "f g", ""},
        {function, text, "literal", none, "f g", ""},
    };
    for (const auto& [kind, content, otherKind, otherContent, found, log] : rows) {
        const Loaded loaded(Entry(content, kind) + Entry(otherContent, otherKind, "g"),
                            {{"en-us", String("f", "GrÖße") + String("g", "gRößE")}});
        EXPECT_EQ(loaded.log, *log ? Lines{log} : Lines()) << kind << content << otherKind << otherContent;
        EXPECT_EQ(Named(*loaded.definition, "GRÖßE"), found) << kind << content << otherKind << otherContent;
        EXPECT_EQ(loaded.definition->GetFunctionById("g")->GetName(), "gRößE");
    }
    // Behind an operator and a function with a library comes one that is compared with the first one like it.
    const Loaded loaded(Entry("", "operator", "a") + Entry(library, function, "b") + Entry(text, function, "c") +
                            Entry(text, function, "d") + Entry("", function, "e") + Entry("", "summary", "f"),
                        {{"en-us", String("a", "N") + String("b", "N") + String("c", "N") + String("d", "N") +
                                       String("e", "N") + String("f", "N")}});
    EXPECT_EQ(loaded.log, (Lines{"QueryEngine 3 QE 0x35d19bfb [e] [n] [c] [N] [c]",
                                 "QueryEngine 7 QE 0x35d0cb52 [3] [f] [n] [2] [b] [N]"}));
    EXPECT_EQ(Named(*loaded.definition, "n"), "a b c d");
}

TEST(CatalogueNames, EachLocaleEntersItsNamesAndTheFirstTextOfAKeyStays) {
    const Loaded loaded(Entry("<name>Same</name>") + Entry("<dll>l</dll>", "function", "g"),
                        {{"de", String("f", "Same") + String("g", "Lib") + String("v", "1") + String("v", "2")},
                         {"en-us", String("f", "Other") + String("g", "Lib")}});
    EXPECT_EQ(loaded.log,
              (Lines{"FDS 7 QE 0x35dfc864 [de] [f] [Same] [Same]", "FDS 3 QE 0x35dfc864 [de] [v] [2] [1]",
                     "FDS 3 QE 0x35dfc864 [en-us] [f] [Other] [Same]", "FDS 3 QE 0x35db32ff [FT_function] [g] [lib]"}));
    EXPECT_EQ(Named(*loaded.definition, "same"), "f f") << "both locales enter it under the one name";
    EXPECT_EQ(Named(*loaded.definition, "other") + Named(*loaded.definition, "lib"), "g");
}

TEST(CatalogueNames, ALocaleWithoutFilesIsLoggedOnce) {
    EXPECT_EQ(Loaded("", {}).log, Lines{"QueryEngine 3 QE 0x35dd45e5 [no locales are available] [en-us]"});
    Loaded loaded("", {{"de", ""}, {"fr", ""}});
    EXPECT_EQ(loaded.log, Lines{"QueryEngine 3 QE 0x35dd45e5 [Available locales: de, fr] [en-us]"});
    Create("it"), Create("de");
    EXPECT_EQ(loaded.catalogue.TakeLog(), Lines());
}

TEST(CatalogueFailure, PassesOutAndTheNextUseLoadsAgain) {
    const auto nested = [](int groups) {
        std::string content = Entry("");
        while (groups-- > 0)
            content = In("group", content);
        return content;
    };
    TestCatalogue catalogue;
    EXPECT_EQ(Tree(), "") << "no file at all is a success";
    AQF_Terminate("test"), AQF_Initialize("test");
    const std::string path = catalogue.Folder() + "/functions.xml";
    const auto failed = [&](const std::string& text, const std::string& line) {
        EXPECT_EQ(FailureOf([] { Create(); }), "ZBLIDOM_Exception -1 [text]" + path + text +
                                                   " Platform/ZBLIDOM/ZBLIDOM_Parser:" + line + "[ZBLIDOM ZBL_THROW]");
    };
    catalogue.Fill("<group>");
    failed(":1:25: mismatched tag", "296");
    catalogue.Fill(nested(510)); // within the root, and an id in the entry
    failed(":1:" + std::to_string(15 + 7 * 510 + 10 + 1) + ": more than 512 nested elements", "296");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    failed(": not a readable file of at most 1073741824 bytes", "307");
    std::filesystem::remove(path);
    catalogue.Fill(nested(509));
    EXPECT_EQ(Tree(), std::string(509, '(') + "f" + std::string(509, ')'));
}

// What leaves marks on the process runs in a child, which tells by its status whether all held.
void RunInChild(const std::function<void()>& work) {
    EXPECT_EXIT((work(), std::_Exit(testing::Test::HasFailure() ? 1 : 0)), testing::ExitedWithCode(0), "");
}

TEST(CatalogueStart, CountsGoWrongOnlyInTheOrderOfTheStarts) {
    // Starts (+) and ends (-) of the library (A) or of the catalogue (F); how often the library really starts.
    const std::pair<std::string, int> rows[] = {
        {"A+A-A+", 2},     {"F+F-F+", 2},   {"A+F+F-A-A+", 2}, {"F+A+A-F-F+", 2},     {"A+F+A-F-A+", 1},
        {"F+A+F-A-F+", 1}, {"A+A+A-A+", 1}, {"F+F+F-F+", 1},   {"A+F+A-F-A+A-A+", 1}, {"A+F+F-A-F+F-A+", 3},
    };
    static int starts = 0;
    for (const auto& row : rows)
        RunInChild([&row] {
            brindle_platform::setLogSink([](const brindle_platform::LogRecord& record) {
                starts += record.text.bytes().starts_with("VKE LogLevel=");
            });
            for (std::size_t i = 0; i < row.first.size(); i += 2) {
                const bool isStart = row.first[i + 1] == '+';
                const auto step = row.first[i] == 'A' ? isStart ? ABrindle_Initialize : ABrindle_Terminate
                                  : isStart           ? AQF_Initialize
                                                      : AQF_Terminate;
                EXPECT_EQ(step("test"), 0);
            }
            EXPECT_EQ(starts, row.second);
        });
}

TEST(CatalogueStart, TheLastEndDropsThePoolAndALaterUseLoadsAgain) {
    TestCatalogue catalogue;
    catalogue.Fill(Entry("", "operation", "old"));
    EXPECT_EQ(Tree(), "old");
    catalogue.Fill(Entry("", "operation", "new"));
    AQF_Initialize("test"), AQF_Terminate("test");
    EXPECT_EQ(Tree(), "old");
    AQF_Terminate("test"), AQF_Initialize("test");
    EXPECT_EQ(Tree(), "new");
}

TEST(CatalogueStart, TwoDoorsAtOnceDontBlockEachOther) {
    for (int round = 0; round < 50; ++round)
        RunInChild([] {
            std::atomic<int> ready = 0;
            const auto meet = [&ready] {
                for (++ready; ready < 2;) {
                }
            };
            std::thread other([&] { meet(), AQF_Initialize("test"), AQF_Terminate("test"); });
            meet(), ABrindle_Initialize("test"), ABrindle_Terminate("test");
            other.join();
        });
}

TEST(CatalogueStart, FirstUsersAtOnceShareOneLoad) {
    TestCatalogue catalogue;
    catalogue.Fill(Entry("<name>a</name>"), {{"en-us", String("f", "b")}});
    const auto use = [] { EXPECT_NE(Create()->GetFunctionByName("A"), nullptr); };
    std::thread first(use), second(use), third(use);
    first.join(), second.join(), third.join();
    EXPECT_EQ(catalogue.TakeLog(), Lines{"FDS 3 QE 0x35dfc864 [en-us] [f] [b] [a]"});
}

TEST(CatalogueStart, DevelopmentModeActsOnTheNextLoad) {
    RunInChild([] {
        TestCatalogue catalogue;
        catalogue.Fill(Entry("", "operation", "installed"));
        EXPECT_EQ(Tree(), "installed");
        AQF_SetInDevMode();
        EXPECT_EQ(Tree(), "installed");
        AQF_Terminate("test"), AQF_Initialize("test");
        // Two levels up from the program directory.
        brindle_platform::setProgramDirectory((catalogue.Folder() + "/bin/bin").c_str());
        const std::string home = "src/vke/Utility/FDS/";
        std::filesystem::create_directories(catalogue.Folder() + "/" + home + "res");
        catalogue.Write(
            home + "FileList.xml",
            In("l", In("definition", "d.xml") + In("description", In("language", "en-us") + In("file", "t.xml"))));
        catalogue.Write(home + "d.xml", In("functionsRoot", Entry("", "operation", "dev")));
        catalogue.Write(home + "res/t.xml", Strings(String("dev", "N")));
        EXPECT_EQ(Named(*Create(), "n"), "dev");
    });
}

} // namespace
