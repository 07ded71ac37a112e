// What the built-in macro functions share: their fixed answers about themselves, their view of the arguments, and the
// failures that they raise.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>

#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"

#include "QMMacroValueAccess.h"

// One object of each derived class serves the whole process, on any number of threads: nothing changes after
// construction. Constructors run while the library is loaded and use none of its services.
class MF_BuiltIn : public AQM_I_MacroFunction {
public:
    void GetParameterTypes(std::vector<int>& types) override;
    I18NString GetName() override;
    int GetReturnType() override;

    // Null for anything but an argument frame; else what Call answers.
    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override;

    // The arguments of one call in the order in which they were written; the frame has them the other way round.
    class Arguments {
    public:
        explicit Arguments(const AQM_MacroValueArray& frame) : m_values(frame.GetValues()) {}
        int Count() const { return static_cast<int>(m_values.size()); }
        // Of an index from 0; it must be below Count.
        const AQM_MacroValue* operator[](int index) const {
            return m_values[m_values.size() - 1 - static_cast<std::size_t>(index)];
        }
        auto begin() const { return m_values.rbegin(); }
        auto end() const { return m_values.rend(); }

    private:
        const AQM_MacroValueList& m_values;
    };

protected:
    MF_BuiltIn(const char* name, std::initializer_list<AQM_MacroValue::MacroValueType> parameterTypes,
               AQM_MacroValue::MacroValueType returnType);

    // A null answer means that the function can do nothing with these arguments.
    virtual std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const = 0;

    // The failures that functions raise: QEException, code 202, one message that names the function. The line is the
    // stable name of the failure in the log.
    [[noreturn]] void FailTooFew(const Arguments& arguments, int wanted, long line) const;
    [[noreturn]] void FailTooMany(const Arguments& arguments, int wanted, long line) const;
    [[noreturn]] void FailCount(long line) const;
    [[noreturn]] void FailType(const Arguments& arguments, int index, const char* wanted, long line) const;
    [[noreturn]] void FailPattern(const I18NString& pattern, long line) const;
    // The argument as a string or as an array; FailType if it is another.
    const I18NString& RequireString(const Arguments& arguments, int index, long line) const;
    const AQM_MacroValueArray& RequireArray(const Arguments& arguments, int index, long line) const;

private:
    friend class MF_Pattern;
    const char* m_name;
    std::vector<int> m_parameterTypes;
    int m_returnType;
};

// Appends the text, which isn't `out`, with each `mark` in it doubled; an empty one isn't.
void QMAppendDoubled(I18NString& out, const I18NString& text, const I18NString& mark);
// The same between two marks, of which the closing one is doubled in the text.
void QMAppendQuoted(I18NString& out, const I18NString& text, const I18NString& opening, const I18NString& closing);
// A new string value.
std::unique_ptr<AQM_MacroValue> QMMakeString(I18NString text);

// Calls `use` with the text of each string element in order; other elements are passed over.
template <class Use>
void QMForEachString(const AQM_MacroValueArray& array, const Use& use) {
    for (const AQM_MacroValue* const element : array.GetValues())
        if (const AQM_MacroValueString* const text = QMAsString(element)) use(text->GetValue());
}

// A new array with what the function answers for each string element.
std::unique_ptr<AQM_MacroValue> QMMapStrings(const AQM_MacroValueArray& array,
                                             const std::function<I18NString(const I18NString&)>& convert);
