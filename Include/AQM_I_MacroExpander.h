// The door of the macro language: a text with #...# blocks goes in, the text with each block replaced by its value
// comes out.
//
//     AQU_ParameterMapApp map("_env", 0);
//     map.Set("year", "2024");
//     std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
//     coordinator->AddParameterMap(&map);
//     AQM_I_MacroExpander expander;
//     I18NString sql = expander.Expand("select * from sales where y = #$year#", coordinator.get());
#pragma once

#include <cstdint>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQM_I_MacroFunction.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "BrindleApi.h"

class AQM_MacroExpander;

// One expander serves one thread at a time; different expanders may run at once.
//
// A text that the language refuses leaves as a QEExceptionExtended (code 901) whose position is 1-based, in characters,
// and lies directly behind the failing token. A value that is a macro block itself is such a text, too; the position
// then is one in the value. A text that is nested too deep for the parser's stacks leaves as a QEException (code 901,
// message 0x35d5e2f1, "text too complex"), an unknown function likewise (code 1221, message 0x35ddd82c with the name).
// Values nested beyond the user option "MacroNesting" of "QueryEngine", 5 by default, leave as a QEExceptionExtended
// without a position (code 0, message 0x35d64ee1 with the limit). Failures of functions and of the coordinator pass
// through. After any failure the expander works on as before.
class BRINDLE_API AQM_I_MacroExpander {
public:
    // Where one macro block lies. Offsets are bytes of the text's UTF-8 form, both ends inclusive; -1 is "not set".
    struct PositionInfo {
        std::int32_t startPosition = -1; // of the opening '#'
        std::int32_t endPosition = -1;   // of the closing '#'
        // Of the first comment in front of the block's first token.
        std::int32_t commentStart = -1;
        std::int32_t commentEnd = -1;
        std::vector<void*> tokens; // part of the layout, never filled
        I18NString expansion;      // the block's value; filled by Analyze alone
    };

    AQM_I_MacroExpander();
    AQM_I_MacroExpander(const AQM_I_MacroExpander&) = delete;
    AQM_I_MacroExpander& operator=(const AQM_I_MacroExpander&) = delete;
    ~AQM_I_MacroExpander();

    // Makes a function known under its name; it replaces an earlier one of that name, a built-in too. The function
    // stays the caller's and must outlive the expander. Null is ignored.
    void AddFunction(AQM_I_MacroFunction* function);

    // Answers the expanded text. The coordinator stays the caller's; null finds no parameter.
    I18NString Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator);
    // Assigns the expanded text to `result` and answers whether a block was replaced. On failure `result` is as it was.
    // `text` and `result` must be different objects (a plain const char* is thrown otherwise).
    bool Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator, I18NString& result);

    // Appends an entry with its value for each block. When a block fails, the entries of those before it stay.
    void Analyze(const I18NString& text, const AQU_I_ParameterAccessCoordinator* coordinator,
                 std::vector<PositionInfo>& out);
    // Appends an entry for each block without executing anything.
    void GetMacroPositions(const I18NString& text, std::vector<PositionInfo>& out);
    // The text as a document: root "str", an element "macro" for each block. All its text nodes in order are the text.
    ZBLIDOM_Node GetAsXml(const I18NString& text);

    // Does nothing; kept for callers that still call it. GetExecutionReport has the report.
    void GetExpansionReport(ZBLIDOM_Node& node);
    // The number of blocks of the last successful Expand.
    int GetReplacementCount();
    // What all Expand calls of this object did, as an element "ExecutionReport"; null unless the user option
    // "GetMacroExpansionExecutionReport" of section "QueryEngine" was set when the process first expanded a text.
    ZBLIDOM_Node GetExecutionReport();

    // Whether the name can stand behind '$' as it is: an ASCII letter, then letters, digits, '_' and '.'. A line feed
    // ends the test with true.
    bool IsValidMacroIdentifier(const I18NString& name);
    // The name as it is written behind '$': unchanged if it is valid, else in brackets with each ']' doubled. The empty
    // name and one that begins with ']' can't be written in a block at all; their bracketed form is refused there. So
    // is one with a line feed behind letters, which counts as valid.
    I18NString MakeValidMacroIdentifier(const I18NString& name);

private:
    AQM_MacroExpander* m_expander;
};
