// What a definition shows and finds under its filters, and what it and its nodes answer.
#include <memory>
#include <regex>
#include <sstream>

#include <gtest/gtest.h>

#include "AQF_I_FunctionDLL.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQF_I_FunctionParameter.h"

#include "Support/Catalogue.h"
#include "Support/FailureCheck.h"
#include "Support/Rows.h"

namespace {

using namespace brindle_test;
using Definition = std::unique_ptr<AQF_I_FunctionDefinition>;
using Node = AQF_I_FunctionNode;

// The definition under filters such as "vendor=V1 type=format hidden".
Definition Filtered(const std::string& filters) {
    Definition definition(AQF_I_FunctionDefinition::Create("en-us"));
    std::istringstream words(filters);
    for (std::string word; words >> word;) {
        const I18NString value(word.substr(word.find('=') + 1).c_str());
        if (word == "hidden") definition->ShowHiddenFunctions();
        if (word == "dimensional") definition->ShowDimensionalFunctionsOnly();
        if (word == "defaults") definition->AddDefaultContexts();
        if (word.starts_with("context=")) definition->AddContext(value);
        if (word.starts_with("vendor=")) definition->AddVendor(value);
        if (word.starts_with("type=")) definition->AddFunctionType(value);
    }
    return definition;
}

// An entry whose name is its id.
std::string Entry(const std::string& kind, const std::string& id, const std::string& further = "") {
    return "<" + kind + "><id>" + id + "</id><name>" + id + "</name>" + further + "</" + kind + ">";
}

std::string Group(const std::string& id, const std::string& content) {
    return "<group><id>" + id + "</id>" + content + "</group>";
}

std::string Joined(const std::vector<I18NString>& texts) {
    std::string line;
    for (const I18NString& text : texts)
        line += "/" + std::string(text.bytes());
    return line.substr(1);
}

struct FunctionDefinition : testing::Test {
    TestCatalogue catalogue;
};

TEST_F(FunctionDefinition, FiveStepsDecideWhatIsVisible) {
    catalogue.Fill(Group("advanced", "<context>macro</context>" + Group("in", Entry("function", "exp"))) +
                   Group("math", "<vendor>V1</vendor><context>tabular</context>" + Entry("function", "round") +
                                     Entry("function", "abs", "<context>crosstab</context>") +
                                     Entry("summary", "sum", "<vendor>V2</vendor>") +
                                     Entry("operator", "plus", "<hidden/>") + Entry("format", "money") +
                                     Entry("operation", "sort", "<dimensional/>")) +
                   Group("empty", "") + Entry("literal", "pi", "<vendor>V3</vendor>"));
    const auto shown = [](const std::string& filters) {
        const Definition definition = Filtered(filters);
        std::vector<Node*> named;
        for (const char* name : {"ABS", "exp", "money", "pi", "plus", "round", "sort", "sum"})
            if (Node* const node = definition->GetFunctionByName(name)) named.push_back(node);
        return TreeOf(*definition->GetRootNode()) + "; " + Ids(named);
    };
    const std::string all = "math(sort abs round sum) empty pi advanced(in(exp)); abs exp pi round sort sum";
    CheckRows(shown, " -> " + all, "type=group type=unknown type=Summary -> " + all, "defaults -> " + all,
              "hidden -> math(sort abs plus round sum) empty pi advanced(in(exp)); abs exp pi plus round sort sum",
              "dimensional -> ; sort", "dimensional type=function -> ; ", "type=format -> math(money); money",
              "type=function -> math(abs round) advanced(in(exp)); abs exp round",
              "type=literal type=operation -> math(sort) pi; pi sort", "type=operator -> math; ",
              "context=tabular -> math(sort round sum) empty pi; pi round sort sum",
              "context=none context=crosstab -> empty pi; abs pi",
              "vendor=V1 -> math(sort abs round sum) empty advanced(in(exp)); abs exp round sort sum",
              "vendor=V2 -> empty advanced(in(exp)); exp sum",
              "vendor=V2 vendor=V3 type=summary type=literal -> pi; pi sum", "vendor=v1 vendor=SQL99 -> " + all);
    EXPECT_EQ(catalogue.TakeLog(), (Lines{"QueryEngine 3 QE 0x35d90b2c [v1]", "QueryEngine 7 QE 0x35d90b2c [SQL99]"}));
}

TEST_F(FunctionDefinition, FoldersListInFileOrderThenByNameThenAdvanced) {
    std::string many, ids; // all of the name ""
    for (int id = 10; id < 50; ++id, ids += " " + std::to_string(id))
        many += "<function><id>" + std::to_string(id + 1) + "</id></function>";
    catalogue.Fill(R"(<function><id>b</id></function><group><id>advanced</id></group><group><id>notadvanced</id></group>
        <operation><id>advanced.o</id></operation><literal><id>a</id></literal><operation><id>o</id></operation>
        <function><id>advancedf</id></function><operator><id>c</id></operator>)" +
                       Group("g", many),
                   {{"en-us", R"(<string id="a">same</string><string id="b">same</string><string id="c">Z</string>
        <string id="advancedf">&#xE9;</string>)"}});
    const Definition definition = Filtered("");
    Node* const root = definition->GetRootNode();
    const std::unique_ptr<Node> folder(root->AddFolder("mine", "Mine"));
    EXPECT_EQ(root->AddFolder("a", "other"), definition->GetFunctionById("a"));
    EXPECT_EQ(TreeOf(*root), "notadvanced o g(" + ids.substr(1) + ") c b a advancedf advanced advanced.o mine");
    definition->AddFunctionType("operator"); // too late for this folder
    EXPECT_EQ(root->AddFunction("own", "Own", folder.get()), 0);
    EXPECT_TRUE(definition->GetFunctionByName("Own") == folder.get() && !definition->GetFunctionByName("Mine"));
    std::vector<Node*> children{root};
    root->GetChildren(children);
    EXPECT_EQ(Ids(children), "/ notadvanced o g c b a advancedf advanced advanced.o mine mine");
    const Definition other = Filtered("");
    Node* const leaf = other->GetFunctionById("b");
    leaf->AddFunction("below", "", folder.get());
    EXPECT_EQ(TreeOf(*leaf), "");
    EXPECT_EQ(TreeOf(*leaf), "mine");
}

TEST_F(FunctionDefinition, NamesAreFoundInAnyCaseAndAClientsOnlyAsWritten) {
    catalogue.Fill("<function><id>a</id></function><literal><id>b</id></literal>" + Entry("function", "own") +
                       "<function><id>h</id><hidden/></function>",
                   {{"en-us", R"(<string id="h">&#xC4;hnlich</string><string id="b">&#xC4;hnlich</string>
        <string id="a">&#xE4;hnlich</string>)"}});
    const Definition definition = Filtered("");
    Node* const root = definition->GetRootNode();
    definition->AddNamedFunction("mine", "Own", root);
    definition->AddNamedFunction("mine2", "Own", nullptr);
    definition->AddNamedFunction("mine", "only", definition->GetFunctionById("a"));
    definition->AddFunction("a", root);
    const auto found = [&definition](const std::string& name) {
        std::vector<Node*> all;
        definition->GetFunctionsByName(name.c_str(), all);
        Node* const first = definition->GetFunctionByName(name.c_str());
        return Ids(all) + "; " + (first ? first->GetId().c_str() : "none");
    };
    CheckRows(found, "\xC3\x84HNLICH -> b a; b", "own -> own; own", "Own -> own /; own", "only -> a; a",
              "Only -> ; none");
    EXPECT_TRUE(definition->GetFunctionById("mine") == root && !definition->GetFunctionById("A"));
    EXPECT_NE(definition->GetFunctionById("a"), root);
}

TEST_F(FunctionDefinition, LevelsConsolidateByTheTable) {
    const auto row = [](const std::string& first) {
        std::string levels;
        for (const int second : {-5, 0, 1, 2, 3, 9})
            levels += " " + std::to_string(AQF_I_FunctionDefinition::ConsolidateQosLevels(
                                static_cast<Node::EQoSLevel>(std::stoi(first)), static_cast<Node::EQoSLevel>(second)));
        return levels;
    };
    CheckRows(row, "-5 ->  -5 0 1 2 3 9", "0 ->  0 0 1 1 1 0", "1 ->  1 1 1 1 1 1", "2 ->  0 1 1 2 2 0",
              "3 ->  0 1 1 2 3 0", "4 ->  0 1 1 2 3 0");
}

// A function with rules such as "interface:OR=limited default:=ok".
std::string Ruled(const std::string& id, const std::string& rules) {
    const std::string xml =
        std::regex_replace(rules, std::regex(R"((\w+):(\w*)=(\w+) ?)"), "<rule><value>$3</value><$1>$2</$1></rule>");
    return Entry("function", id, "<qosLevel>" + xml + "</qosLevel>");
}

TEST_F(FunctionDefinition, RulesAnswerForTheDataSourcesInUse) {
    const std::string relational = "datasourceQueryType:relational=limited ", rest = "default:=unavailable";
    catalogue.Fill(Ruled("none", "") + Ruled("default", "default:=limited default:=restricted") +
                   Ruled("one", "interface:OR=unavailable default:=ok") +
                   Ruled("two", "interface:OR=limited interface:SS=ok " + rest) +
                   Ruled("lower", "interface:or=unavailable") +
                   Ruled("last", "interface:OR=limited " + relational + rest) +
                   Ruled("query", relational + "datasourceQueryType:multidimensional=restricted"));
    const auto levels = [](const std::string& sources) {
        const Definition definition = Filtered("");
        std::istringstream words(sources);
        std::string row;
        for (std::string word; words >> word;)
            word.starts_with("q:") ? definition->AddQueryType(word.substr(2).c_str())
                                   : definition->AddInterface(word == "-" ? "" : word.c_str());
        for (const char* const id : {"none", "default", "one", "two", "lower", "last", "query"})
            row += std::to_string(definition->GetFunctionById(id)->GetQosLevel());
        return row;
    };
    // For "last", only the size of the last rule's set counts against the hits of both.
    CheckRows(levels, " -> 3102021", "OR -> 3102322", "or SS -> 3112322", "SS -> 3133322", "OR DB -> 3111321",
              "OR SS DB -> 3111321", "SS DB -> 3131311", "d2 -> 3130322", "T1 -> 3130322", "D2,IF -> 3130322",
              "BW -> 3130301", "- -> 3130301", "D2 BW -> 3130311", "q:relational q:b -> 3102012",
              "q:b -> 3102013"); // its last rule fits nothing and counts all the same
}

TEST_F(FunctionDefinition, WithoutALocaleTheRelationalListIsNotRead) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the list is read once in a process
    catalogue.Fill(Ruled("f", "datasourceQueryType:relational=limited datasourceQueryType:other=unavailable"));
    const auto levels = [this] {
        brindle_platform::overrideOption("QueryEngine", "RelInterfaces", "BW,X");
        for (const bool withLocale : {false, true}) {
            if (withLocale) Filtered("");
            const Definition definition(AQF_I_FunctionDefinition::Create());
            definition->AddInterface("BW");
            Node* const node = definition->GetFunctionById("f");
            std::fprintf(stderr, "%d%s", node->GetQosLevel(), node->GetName().c_str());
        }
        catalogue.RemoveFiles();
        std::_Exit(0);
    };
    EXPECT_EXIT(levels(), testing::ExitedWithCode(0), "^1f2f$");
}

TEST_F(FunctionDefinition, WhatAClientStatesComesBeforeTheRules) {
    catalogue.Fill(Ruled("f", "default:=limited"), {{"en-us", R"(<string id="f.tip">Tip</string>)"}});
    const Definition definition = Filtered("");
    Node* const node = definition->GetFunctionById("f");
    std::string answers;
    const auto answer = [&] { answers += std::to_string(node->GetQosLevel()) + node->GetTip().c_str() + ";"; };
    answer();
    definition->SetQosLevel("f", Node::EQoSOk, "set"), answer();
    definition->SetQosLevel("f", Node::EQoSUnavailable, ""), answer();
    definition->MergeQosLevel("f", Node::EQoSOk, ""), answer();
    definition->MergeQosLevel("f", static_cast<Node::EQoSLevel>(9), "m1");
    definition->MergeQosLevel("f", Node::EQoSLimited, "m2"), answer();
    EXPECT_EQ(answers, "2Tip;3Tip\nset;0Tip\nset;3Tip\nset;1Tip\n\nm1\nm2;");
}

TEST_F(FunctionDefinition, TypesAreAnsweredByNameWithoutFilters) {
    catalogue.Fill(
        R"(<function><id>a</id><canonical>x</canonical><returnType>the crx type</returnType><hidden/></function>
        <function><id>b</id><canonical>x</canonical><returnType>crxb</returnType><format>f1</format></function>
        <function><id>c</id><canonical>x</canonical><returnType>number</returnType><formatType>f2</formatType></function>
        <function><id>d2</id><name>d</name><returnType>crx 2</returnType></function>)" +
            Entry("function", "d", "<returnType>crx</returnType>") + Entry("format", "e", "<format>f3</format>"),
        {{"en-us", R"(<string id="a">Same</string><string id="b">same</string><string id="c">SAME</string>)"}});
    using Functions = AQF_I_FunctionDefinition;
    EXPECT_EQ(Functions::GetFormatForSpec("e") + Functions::GetFormatForSpec("same"), "f3");
    EXPECT_EQ(catalogue.TakeLog(), Lines{"QueryEngine 3 ** Cannot resolve the following formatSpec :same"});
    const auto types = [](const std::string& name) {
        return Joined({Functions::GetFunctionReturnType(name.c_str()), Functions::GetFunctionFormatType(name.c_str())});
    };
    CheckRows(types, "sAME -> number/f1", "D -> crx/");
    EXPECT_EQ(FailureOf([] { Functions::GetFunctionReturnType("No"); }),
              R"(QEException 150 0x35d1aa3b("No") Source/QFFunctionDefinition:109)");
    EXPECT_EQ(FailureOf([] { Functions::GetFunctionFormatType("a"); }),
              R"(QEException 150 0x35d1aa3b("a") Source/QFFunctionDefinition:154)");
}

TEST_F(FunctionDefinition, VendorsAndNamesComeInTheLocale) {
    catalogue.Fill("<vendor>V2</vendor><function><id>f</id><vendor>V1</vendor><vendor>V2</vendor></function>",
                   {{"en-us", R"(<string id="V1">One</string><string id="f">Eff</string>)"},
                    {"de", R"(<string id="f">Ff</string>)"}});
    EXPECT_EQ(Filtered("")->GetVendorName("v1"), "");
    EXPECT_EQ(catalogue.TakeLog(), Lines{"QueryEngine 3 QE 0x35d240e6 [v1]"});
    const auto answers = [](const std::string& locale) {
        const Definition definition(AQF_I_FunctionDefinition::Create(locale.c_str()));
        std::vector<I18NString> all{definition->GetLocale().getName()};
        definition->GetLocales(all);
        definition->GetVendors(all, all);
        all.push_back(definition->GetVendorName("V1") + definition->GetFunctionById("f")->GetName());
        return Joined(all);
    };
    CheckRows(answers, "en_US -> en-us/de/en-us/V2//V1/One/OneEff", "de-AT -> de/de/en-us/V2//V1//Ff",
              "fr -> en-us/de/en-us/V2//V1/One/OneEff");
}

TEST_F(FunctionDefinition, LibrariesHoldTheirFunctionsUnfiltered) {
    catalogue.Fill(Entry("function", "b", "<dll>z</dll><hidden/>") + Entry("function", "a", "<dll>z</dll>") +
                   Entry("function", "c", "<dll>A</dll>") + Entry("function", "d"));
    const Definition definition = Filtered("type=format");
    AQF_I_FunctionDLL* const first = definition->GetFunctionById("a")->GetDLL();
    std::vector<AQF_I_FunctionDLL*> libraries;
    definition->GetDLLs(libraries);
    std::string line;
    for (AQF_I_FunctionDLL* const library : libraries) {
        std::vector<Node*> functions{definition->GetRootNode()}; // appended to
        library->GetFunctions(functions);
        line += library->GetName().c_str() + (":" + Ids(functions)) + ";";
    }
    EXPECT_EQ(line, "A:/ c;z:/ b a;");
    EXPECT_TRUE(first == libraries[1] && !definition->GetFunctionById("d")->GetDLL());
}

TEST_F(FunctionDefinition, PropertiesAreTextsWordsAndFurtherElements) {
    catalogue.Fill(Entry("summary", "f", "<own>1</own><own>2</own><tip>hidden by the text</tip><type>t</type>") +
                       "<format><id>plain</id></format>" + Group("g", ""),
                   {{"en-us", R"(<string id="f.tip">Tip</string><string id="f.syntax">Syn</string>
        <string id="f.">Dot</string><string id="f.&#xE9;">Acute</string>)"}});
    const Definition definition = Filtered("");
    const auto property = [&definition](const std::string& call) {
        const std::size_t colon = call.find(':');
        Node* const node = definition->GetFunctionById(call.substr(0, colon).c_str());
        return (node ? node : definition->GetRootNode())->GetProperty(call.substr(colon + 1).c_str()).c_str();
    };
    CheckRows(property, "f: -> f", "f:tip -> Tip", "f:^tip -> Tip", "f:syntax -> Syn", "f:^syntax -> Syn", "f:^ -> Dot",
              "f:^\xC3\xA9 -> Acute", "f:^own -> ", "f:own -> 2", "f:id -> f", "f:lacking -> ", "f:type -> summary",
              "f:qosLevel -> ok", "plain:type -> format", "plain: -> ", "/:type -> group", "/:own -> ");
}

TEST_F(FunctionDefinition, TheNearestListOfInterfacesRules) {
    std::string coded; // each under its interface as its id
    for (const std::string code : {"ALL_rel", "all_olap", "!OR", "!or", "X!OR"})
        coded += Entry("function", code, "<interface>" + code + "</interface>");
    catalogue.Fill(Group("g", "<interface>OR</interface><interface>low</interface>" + Entry("function", "under") +
                                  Entry("function", "own", "<interface>SS</interface><interface>or</interface>") +
                                  Group("deeper", Entry("function", "deep"))) +
                   Entry("function", "free") + Entry("function", "none", "<interface/>") + coded);
    const Definition definition = Filtered("");
    const auto supported = [&definition](const std::string& id) {
        std::vector<I18NString> codes{""};
        for (const char* const code : {"or", "SS", "low", "CS", "TD25", "BW", "LA", "no"})
            if (definition->GetFunctionById(id.c_str())->GetIsSupportedByInterface(code)) codes.push_back(code);
        return Joined(codes);
    };
    CheckRows(supported, "under -> /or", "own -> /SS", "deep -> /or", "free -> /or/SS/low/CS/TD25/BW/LA", "none -> ",
              "ALL_rel -> /or/SS/CS/TD25", "all_olap -> /BW/LA", "!OR -> /SS/CS/TD25/BW/LA",
              "!or -> /or/SS/CS/TD25/BW/LA", "X!OR -> /or/SS/CS/TD25/BW/LA");
    std::vector<I18NString> known;
    definition->GetInterfaces(known);
    EXPECT_EQ(Joined({known.front(), known[16], known.back()}) + std::to_string(known.size()), "/LOW/YK33");
}

TEST_F(FunctionDefinition, ParametersTellTypesAndOccurrences) {
    catalogue.Fill(Entry("function", "f", R"(<parameterType>date | dateTime</parameterType>
        <parameterType>keyword</parameterType><parameter type="level | a | | b | "><minOccurs>0</minOccurs></parameter>
        <parameter type="set"><nullable>true</nullable></parameter><parameter><nullable>no</nullable></parameter>)"));
    const Definition definition = Filtered("");
    Node* const node = definition->GetFunctionById("f");
    std::vector<AQF_I_FunctionParameter*> parameters;
    node->GetParameters(parameters);
    std::string line;
    for (AQF_I_FunctionParameter* const raw : parameters) {
        const std::unique_ptr<AQF_I_FunctionParameter> parameter(raw);
        std::vector<I18NString> types;
        parameter->GetTypes(types);
        line += Joined(types) + (parameter->GetIsOptional() ? " optional" : "") +
                (parameter->GetIsNullable() ? " null, " : ", ");
    }
    EXPECT_EQ(line, "date/dateTime null, keyword, level/a/| b/ optional, set null, , ");
    const std::vector<I18NString>& types = node->GetParameterTypes();
    std::unique_ptr<Node>(node->AddFolder("own", ""))->GetParameterTypes(); // leaves that vector alone
    EXPECT_EQ(Joined(types), "date | dateTime/keyword/level | a | | b | /set/");
    definition->GetRootNode()->GetParameterTypes();
    EXPECT_TRUE(types.empty());
}

TEST_F(FunctionDefinition, AClientsNodeHasAnIdAndAName) {
    catalogue.Fill("<interface>OR</interface>");
    const Definition definition = Filtered("");
    definition->MergeQosLevel("idMine", Node::EQoSLimited, "note");
    for (const I18NString name : {"", "Mine"}) {
        const std::unique_ptr<Node> node(definition->GetRootNode()->AddFolder("id" + name, name));
        std::vector<AQF_I_FunctionParameter*> parameters;
        node->GetParameters(parameters);
        EXPECT_TRUE(parameters.empty() && node->GetParameterTypes().empty() && !node->GetDLL());
        EXPECT_EQ(definition->GetFunctionById("id" + name), node.get());
        EXPECT_EQ(node->GetType(), name.empty() ? FT_unknown : FT_group);
        EXPECT_EQ(node->GetQosLevel(), name.empty() ? Node::EQoSOk : Node::EQoSLimited);
        EXPECT_EQ(Joined({node->GetName(), node->GetProperty(""), node->GetProperty("id"), node->GetTip()}).c_str(),
                  (name + "/" + name + "//"));
        const std::unique_ptr<Node> below(node->AddFolder("b" + name, "B"));
        EXPECT_EQ(TreeOf(*node), ("b" + name).c_str());
        EXPECT_FALSE(node->GetIsSupportedByInterface("OR"));
    }
}

} // namespace
