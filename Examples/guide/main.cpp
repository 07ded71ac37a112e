// What Docs/library.md, Docs/sqltext.md and README.md show of the library, as one program that prints what comes of it.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"

#include "ABrindle.h"
#include "AQE_SqlText.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQM_I_MacroExpander.h"
#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_I_ParameterMap.h"
#include "AQU_ParameterMapApp.h"
#include "AQU_csvFile_v2.h"
#include "QEException.h"

namespace {

void Expand() {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("year", "2024");
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters);
    AQM_I_MacroExpander expander;
    I18NString sql = expander.Expand("select * from sales where y = #$year#", coordinator.get());
    std::cout << sql << '\n';
}

// $session{'user'} and $session{'tenant'}.
class SessionMap : public AQU_I_ParameterMap {
public:
    explicit SessionMap(int initialPriority) : AQU_I_ParameterMap(initialPriority) {}

    int Get(const I18NString& mapName, const I18NString& key, I18NString& value) override {
        if (mapName != "session") return -2;
        if (key != "user" && key != "tenant") return -1;
        value = key == "user" ? "li" : "north";
        return 1;
    }
    // A key without a map name is one of "_env".
    int Get(const I18NString& key, I18NString& value) override { return Get("_env", key, value); }
    void GetMapNames(std::vector<I18NString>& names) override { names.push_back("session"); }
    int GetAllEntries(const I18NString& mapName, std::vector<std::pair<I18NString, I18NString>>& entries) override {
        if (mapName != "session") return -2;
        entries.insert(entries.end(), {{"tenant", "north"}, {"user", "li"}});
        return 1;
    }

protected:
    int GetDefault(const I18NString&, I18NString&) override { return -2; }
};

void UseOwnMap() {
    SessionMap session(10);
    AQU_ParameterMapApp given("session", 0); // weaker than 10
    given.Set("session", "tenant", "south");
    given.Set("session", "role", "clerk");
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&session);
    coordinator->AddParameterMap(&given);
    std::cout << AQM_I_MacroExpander().Expand("#$session{'tenant'}# #$session{'role'}#", coordinator.get()) << '\n';
}

// upper(text), for ASCII.
class Upper : public AQM_I_MacroFunction {
public:
    I18NString GetName() override { return "upper"; }
    void GetParameterTypes(std::vector<int>& types) override { types.push_back(AQM_MacroValue::MVT_String); }
    int GetReturnType() override { return AQM_MacroValue::MVT_String; }

    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        const auto& frame = static_cast<const AQM_MacroValueArray&>(*arguments);
        const AQM_MacroValue* const argument = frame.Size() == 1 ? frame.Get(0) : nullptr;
        if (!argument || argument->GetValueType() != AQM_MacroValue::MVT_String) return nullptr;
        std::string text(static_cast<const AQM_MacroValueString*>(argument)->GetValue().bytes());
        for (char& byte : text)
            if (byte >= 'a' && byte <= 'z') byte = static_cast<char>(byte - 'a' + 'A');
        return new AQM_MacroValueString(text.c_str());
    }
};

void UseOwnFunction() {
    Upper upper;
    AQM_I_MacroExpander expander;
    expander.AddFunction(&upper);
    std::cout << expander.Expand("select #upper('net')#", nullptr) << '\n';
}

void LookUpFunctions() {
    std::unique_ptr<AQF_I_FunctionDefinition> functions(AQF_I_FunctionDefinition::Create("fr"));
    functions->AddInterface("OR");
    AQF_I_FunctionNode* const node = functions->GetFunctionById("regexp_like");
    if (node) std::cout << node->GetCanonicalExpression() << " -> " << node->GetReturnType() << '\n';

    std::vector<AQF_I_FunctionNode*> children;
    functions->GetRootNode()->GetChildren(children);
    const auto isFolder = [](AQF_I_FunctionNode* child) { return child->GetIsGroup(); };
    std::cout << std::count_if(children.begin(), children.end(), isFolder) << " folders\n";
}

void RenderSql() {
    AQE_SqlText statement("sql", 12); // a statement, from line 12 of its source
    statement.AddKeyword(AQE_SqlTextKeyword::STK_Select);
    statement.AddColumn("c.name");
    statement.AddKeyword(AQE_SqlTextKeyword::STK_From);
    statement.AddTable("customer c");

    I18NString sql = statement.GetText();
    I18NString markup;
    statement.StreamToXmlHtml(markup);
    std::cout << sql << '\n' << markup << '\n';
}

void CopyRecords() {
    {
        AQU_csvFile_v2 file("cities.csv", "w");
        file.Put({"city", "note"});
        file.Put({"Washington, D.C.", "say \"hello\""});
    }
    AQU_csvFile_v2 file("cities.csv", "r");
    for (std::vector<I18NString> fields; file.Get(fields); fields.clear())
        std::cout << fields.size() << " fields, the last is " << fields.back() << '\n';
    std::filesystem::remove("cities.csv");
}

void HandleFailures() {
    for (const char* const text : {"from #$a b#", "#sort('x')#"}) {
        try {
            AQM_I_MacroExpander().Expand(text, nullptr);
        } catch (const QEExceptionExtended& failure) { // the text is refused
            std::cout << failure.getCode() << " at " << failure.GetPosition() << ": " << failure.getMessage() << '\n';
        } catch (const ZBLException& failure) { // everything else that the library throws
            std::cout << failure.getCode() << ": " << failure.getMessage() << '\n';
        }
    }
}

void ExpandOnThreads() {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("table", "sales");
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters); // filled before the threads begin, and only read by them
    I18NString results[2];
    {
        const auto expand = [&](const char* text, I18NString& result) {
            result = AQM_I_MacroExpander().Expand(text, coordinator.get()); // an expander for each thread
        };
        std::jthread first(expand, "select count(*) from #$table#", std::ref(results[0]));
        std::jthread second(expand, "select max(year) from #$table#", std::ref(results[1]));
    }
    std::cout << results[0] << "; " << results[1] << '\n';
}

} // namespace

int main() {
    if (ABrindle_Initialize("guide") != 0) return 1;
    Expand();
    UseOwnMap();
    UseOwnFunction();
    LookUpFunctions();
    RenderSql();
    CopyRecords();
    HandleFailures();
    ExpandOnThreads();
    ABrindle_Terminate("guide");
    return std::cout.flush() ? 0 : 1;
}
