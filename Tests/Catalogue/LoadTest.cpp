// What the catalogue makes of its files, and when it starts, loads and ends.
#include <atomic>
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

Definition Create(const char* locale = "en-us") { return Definition(AQF_I_FunctionDefinition::Create(locale)); }
std::string Tree() { return TreeOf(*Create()->GetRootNode()); }

std::string In(const std::string& tag, const std::string& text) { return "<" + tag + ">" + text + "</" + tag + ">"; }
std::string Entry(const std::string& content, const std::string& kind = "function", const std::string& id = "f") {
    return In(kind, In("id", id) + content);
}
std::string String(const std::string& id, const std::string& text) {
    return "<string id='" + id + "'>" + text + "</string>";
}

std::string Named(AQF_I_FunctionDefinition& definition, const char* name) {
    std::vector<AQF_I_FunctionNode*> found;
    definition.GetFunctionsByName(name, found);
    return Ids(found);
}

struct Loaded {
    explicit Loaded(const std::string& definitions, const TestCatalogue::Texts& texts = {{"en-us", ""}})
        : definition((catalogue.Fill(definitions, texts), Create())), log(catalogue.TakeLog()) {}
    TestCatalogue catalogue;
    Definition definition;
    Lines log;
};

// Canonical, its expression, return type, format, library, the properties "id", "hide" and "other", then each parameter
// as "(type min max null)".
std::string Described(AQF_I_FunctionNode& node) {
    I18NString line = node.GetCanonical() + "," + node.GetCanonicalExpression() + "," + node.GetReturnType() + "," +
                      node.GetFormatType() + "," + (node.GetDLL() ? node.GetDLL()->GetName() : "");
    for (const char* const key : {"id", "hide", "other"})
        line += "," + node.GetProperty(key);
    std::vector<AQF_I_FunctionParameter*> parameters;
    node.GetParameters(parameters);
    for (AQF_I_FunctionParameter* const parameter : parameters) {
        line += " (" + parameter->GetType();
        line.appendUtf8(" " + std::to_string(parameter->GetMinOccurs()) + " " +
                        std::to_string(parameter->GetMaxOccurs()));
        line += parameter->GetIsNullable() ? " null)" : ")";
        delete parameter;
    }
    return std::string(line.bytes());
}

TEST(CatalogueEntry, EachElementHasItsEffectInAnyOrder) {
    const std::pair<const char*, const char*> rows[] = {
        {"<canonical>a</canonical><canonical>b</canonical><dll>x</dll><dll>y</dll>", "b,,,,y,f,,"},
        {"<format>a</format><formatType>b</formatType><canonicalExpression>e</canonicalExpression>", ",e,,b,,f,,"},
        {"<formatType>a</formatType><format>b</format><returnType>r</returnType><hide>1</hide>", ",,r,b,,f,1,"},
        {"<other>a</other><other>b</other><id>g</id>", ",,,,,g,,b"},
        {"<other>a<b>c</b><![CDATA[<d>]]>e</other><hide><b/>a</hide>", ",,,,,f,,a<d>e"},
        {"<other><![CDATA[<d>]]>e</other>", ",,,,,f,,<d>"},
        {"<parameterType>a</parameterType><parameter/>", ",,,,,f,, (a 1 1 null) ( 1 1 null)"},
        {"<parameter><type/><type>b</type><nullable>yes</nullable></parameter>", ",,,,,f,, ( | b 1 1)"},
        {"<parameter><type><b/>set</type><nullable>true</nullable></parameter>", ",,,,,f,, (set 1 1 null)"},
        {"<parameter><optional>no</optional><minOccurs>0</minOccurs></parameter>", ",,,,,f,, ( 0 1 null)"},
        {"<parameter><minOccurs>2</minOccurs><optional/><maxOccurs>99999999999</maxOccurs></parameter>",
         ",,,,,f,, ( 2 2147483647 null)"},
        {"<parameter optional='false'><minOccurs>0</minOccurs></parameter>", ",,,,,f,, ( 1 1 null)"},
        {"<parameter type='b' optional='true'><type>a</type></parameter>", ",,,,,f,, (b 0 1 null)"},
        {"<parameter type='' optional=''><type>a</type><minOccurs>0</minOccurs></parameter>", ",,,,,f,, (a 0 1 null)"},
    };
    for (const auto& [content, expected] : rows)
        EXPECT_EQ(Described(*Loaded(Entry(content)).definition->GetFunctionById("f")), expected) << content;
}

TEST(CatalogueEntry, ARuleNeedsAValueAndASelector) {
    // The level with the interface "OR", and the ordinals of the rules that are dropped.
    const std::tuple<const char*, int, std::string> rows[] = {
        {"<x/><rule/><rule><interface>SS</interface><interface>OR</interface><value>limited</value></rule>", 2, "1"},
        {"<rule><value>no</value><value>ok</value><value><x/>limited</value><default/></rule>", 2, ""},
        {"<rule><value>limited</value><value>no</value><default/></rule>", 3, "1"},
        {"<rule><interface/><default/><value>limited</value></rule>", 2, ""},
        {"<rule><value>ok</value></rule><rule><datasourceQueryType/><value>ok</value></rule>", 3, "12"},
        {"<rule/></qosLevel><qosLevel><rule><default/><interface/><value>limited</value></rule>", 3, "11"},
    };
    for (const auto& [rules, level, dropped] : rows) {
        const Loaded loaded(Entry(In("qosLevel", rules)));
        Lines expected;
        for (const char ordinal : dropped)
            expected.push_back(std::string("QueryEngine 7 QE 0x35de6af7 [") + ordinal + "] [" +
                               loaded.catalogue.Folder() + "/functions.xml] [f]");
        EXPECT_EQ(loaded.log, expected) << rules;
        loaded.definition->AddInterface("or");
        EXPECT_EQ(loaded.definition->GetFunctionById("f")->GetQosLevel(), level) << rules;
    }
}

TEST(CatalogueTree, FilesFillOneTreeAndTheFirstEntryOfAnIdCounts) {
    TestCatalogue catalogue;
    const std::string first = Entry("", "operation", "g") + In("group", "<id>g</id><name>no</name>" + Entry("")) +
                              In("group", Entry("", "literal", "l")) + Entry("", "function", "") + "<function/>";
    const std::string second = In("group", "<id>g</id>" + Entry("", "summary", "s") + Entry("<dll>x</dll>") +
                                               In("group", "<id>g</id>" + Entry("", "operator", "o"))) +
                               In("group", Entry("", "literal", "m"));
    catalogue.Write("a.xml", In("a", "<b><b><b/></b></b>" + In("functionsRoot", first) +
                                         In("functionsRoot", Entry("", "literal", "no"))));
    catalogue.Write("b.xml", In("functionsRoot", second));
    catalogue.Write("none.xml", In("functions", Entry("")));
    catalogue.Write("empty.xml", "");
    std::string list;
    for (const char* const file : {"", "none.xml", "a.xml", "empty.xml", "missing.xml", "b.xml", "a.xml"})
        list += In("definition", file);
    catalogue.Write("FileList.xml", In("l", list));
    EXPECT_EQ(Tree(), "g g(g(o) f s) (l m)");
    EXPECT_EQ(Create()->GetFunctionById("f")->GetDLL(), nullptr);
}

TEST(CatalogueFileLists, FurtherListsComeBehindTheMainOneByName) {
    TestCatalogue catalogue;
    const auto list = [&](const std::string& name, const std::string& id, const std::string& further = "") {
        catalogue.Write(id + ".xml", In("functionsRoot", Entry("", "operation", id)));
        catalogue.Write(name, In("l", In("definition", id + ".xml") + further));
    };
    const auto texts = [](const char* language) {
        return In("description", In("x", In("language", language)) + "<file/>" + In("file", language));
    };
    list("FileListb.xml", "c", texts("de"));
    list("FILELISTa.XML", "b", texts(" DE.UTF-8") + "<description/>");
    list("FileList.xml", "a", texts("missing"));
    for (const char* const other : {"filelist.xml", "xFileList.xml", "FileList.xml.bak"})
        list(other, "no");
    const std::string section = In("section", String("a", "1") + In("x", String("b", "no")) +
                                                  In("section", String("b", "2") + String("c", "<x>no</x>3")));
    catalogue.Write("de", In("t", In("component", In("component", In("section", String("c", "late"))))));
    catalogue.Write(" DE.UTF-8", In("t", In("component", section) + In("section", String("c", "no"))));
    EXPECT_EQ(Tree(), "a b c");
    const Definition definition = Create();
    EXPECT_EQ(Named(*definition, "1") + Named(*definition, "2") + Named(*definition, "3"), "abc");
    EXPECT_EQ(catalogue.TakeLog(),
              (Lines{"FDS 3 QE 0x35dfc864 [de] [c] [late] [3]", "FDS 3 QE 0x35dfc864 [de] [c] [late] [3]",
                     "QueryEngine 3 QE 0x35dd45e5 [Available locales: , de, missing] [en-us]"}))
        << "the locale once, a text for each component around it";
}

TEST(CatalogueNames, KindLibraryAndCanonicalDecideWhoSharesAName) {
    using Kind = std::pair<const char*, const char*>;
    const Kind f2("function", "<canonical>2</canonical>"), f1("function", "<canonical>1</canonical>"),
        lib("function", "<dll>l</dll>"), s("summary", ""), sLib("summary", "<dll>l</dll>"), o("operator", ""),
        l("literal", "");
    // Entries "a", "b" and so on, and those of them that have the name.
    const std::tuple<std::vector<Kind>, const char*, Lines> rows[] = {
        {{f1, f1, lib, f1}, "a b c d", {}},
        {{f1, f2}, "a", {"QueryEngine 3 QE 0x35d19bfb [b] [größe] [2] [a] [GrÖße] [1]"}},
        {{lib, f2, lib}, "a b", {"FDS 3 QE 0x35db32ff [FT_function] [c] [größe]"}},
        {{s, sLib, sLib, l, o}, "a b c d e", {}},
        // Each is compared with the first one that can be in its way.
        {{o, lib, f1, l, f1, f2, s},
         "a b c d e",
         {"QueryEngine 3 QE 0x35d19bfb [f] [größe] [2] [c] [GrÖße] [1]",
          "QueryEngine 7 QE 0x35d0cb52 [3] [g] [größe] [2] [b] [GrÖße]"}},
    };
    for (const auto& [entries, found, log] : rows) {
        std::string definitions, strings, id = "a";
        for (const auto& [kind, content] : entries) {
            definitions += Entry(content, kind, id);
            strings += String(id, "GrÖße");
            ++id[0];
        }
        const Loaded loaded(definitions, {{"en-us", strings}});
        EXPECT_EQ(Named(*loaded.definition, "GRÖßE"), found);
        EXPECT_EQ(loaded.log, log) << found;
    }
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

TEST(CatalogueStart, ThePoolLastsUntilTheLastEndAndAFailedLoadLeavesNone) {
    TestCatalogue catalogue;
    EXPECT_EQ(Tree(), "") << "no file at all is a success";
    EXPECT_EQ(catalogue.TakeLog(), Lines{"QueryEngine 3 QE 0x35dd45e5 [no locales are available] [en-us]"});
    catalogue.Fill("<group>");
    AQF_Initialize("test"), AQF_Terminate("test");
    EXPECT_EQ(Tree(), "");
    AQF_Terminate("test"), brindle_platform::setNextInitializeResult(7);
    EXPECT_EQ(AQF_Initialize("test"), 7);
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(FailureOf([] { Create(); }),
                  "ZBLIDOM_Exception -1 [text]" + catalogue.Folder() +
                      "/functions.xml:1:25: mismatched tag Platform/ZBLIDOM/ZBLIDOM_Parser:296[ZBLIDOM ZBL_THROW]");
    // Long enough for the others to come while the first one loads.
    const std::string blanks(5'000'000, ' ');
    catalogue.TakeLog(), catalogue.Fill(blanks + Entry("<name>a</name>"), {{"en-us", String("f", "b")}});
    const auto use = [] { EXPECT_NE(Create()->GetFunctionByName("A"), nullptr); };
    { const std::jthread first(use), second(use), third(use); }
    EXPECT_EQ(catalogue.TakeLog(), Lines{"FDS 3 QE 0x35dfc864 [en-us] [f] [b] [a]"}) << "they share one load";
}

// What leaves marks on the process runs in a child, which tells by its status whether all held.
void RunInChild(const auto& work) {
    EXPECT_EXIT((work(), std::_Exit(testing::Test::HasFailure() ? 1 : 0)), testing::ExitedWithCode(0), "");
}

TEST(CatalogueStart, CountsGoWrongOnlyInTheOrderOfTheStarts) {
    using Step = long (*)(const char*);
    const Step A = ABrindle_Initialize, a = ABrindle_Terminate, F = AQF_Initialize, f = AQF_Terminate;
    // How often the library really starts.
    const std::pair<std::vector<Step>, int> rows[] = {{{A, F, f, a, F, f, A}, 3}, {{F, A, a, f, F}, 2},
                                                      {{A, F, a, f, A}, 1},       {{F, A, f, a, F}, 1},
                                                      {{A, F, a, f, A, a, A}, 1}, {{F, f, f, A}, 2}};
    for (const auto& [steps, expected] : rows)
        RunInChild([&steps = steps, &expected = expected] {
            static int starts = 0;
            brindle_platform::setLogSink([](const auto& record) { starts += record.text.find("VKE LogLevel=") == 0; });
            for (const Step step : steps)
                EXPECT_EQ(step("test"), 0);
            EXPECT_EQ(starts, expected);
        });
}

TEST(CatalogueStart, TwoDoorsAtOnceDontBlockEachOther) {
    for (int round = 0; round < 50; ++round)
        RunInChild([round] {
            // The library logs that it has no settings before it comes to the catalogue, and waits there for the other.
            brindle_platform::setProgramDirectory("/none");
            brindle_platform::setLogSink(
                [](const auto&) { std::this_thread::sleep_for(std::chrono::milliseconds(2)); });
            const std::chrono::milliseconds late(round % 2);
            std::atomic<int> ready = 0;
            const auto meet = [&ready] {
                for (++ready; ready < 2;) {
                }
            };
            const std::jthread other(
                [&] { meet(), std::this_thread::sleep_for(late), AQF_Initialize("test"), AQF_Terminate("test"); });
            meet(), ABrindle_Initialize("test"), ABrindle_Terminate("test");
        });
}

TEST(CatalogueStart, DevelopmentModeActsOnTheNextLoad) {
    RunInChild([] {
        TestCatalogue catalogue;
        catalogue.Fill(Entry("", "operation", "dev"), {{"en-us", String("dev", "N")}});
        // Two levels up from the program directory.
        brindle_platform::setProgramDirectory((catalogue.Folder() + "/bin/bin").c_str());
        EXPECT_EQ(Tree(), "");
        const std::string home = catalogue.Folder() + "/src/vke/Utility/FDS/";
        std::filesystem::create_directories(home + "res");
        for (const std::string file : {"FileList.xml", "functions.xml", "en-us.xml"})
            std::filesystem::rename(catalogue.Folder() + "/" + file, home + (file[0] == 'e' ? "res/" : "") + file);
        AQF_SetInDevMode();
        EXPECT_EQ(Tree(), "");
        AQF_Terminate("test"), AQF_Initialize("test");
        EXPECT_EQ(Named(*Create(), "n"), "dev");
    });
}

} // namespace
