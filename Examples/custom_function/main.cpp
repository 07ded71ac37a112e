// How an application adds a function to the macro language and replaces a built-in one. The added one,
// daterange(column, first, last), writes a condition on a date; the replaced one, sq, is for a database in which a
// backslash escapes the character behind it, so that doubling the apostrophes is not enough.
//
// A function is a class derived from AQM_I_MacroFunction. It is given the values of its arguments, computed already,
// and answers a new value. What it answers is put into the text as it is, so quoting is the function's own affair.
#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"

#include "AQE_TextUtilities.h"
#include "AQM_I_MacroExpander.h"
#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace {

// A value can be null, and its type tells what it is: ask before the cast.
const AQM_MacroValueString* AsString(const AQM_MacroValue* value) {
    if (!value || value->GetValueType() != AQM_MacroValue::MVT_String) return nullptr;
    return static_cast<const AQM_MacroValueString*>(value);
}

const AQM_MacroValueArray* AsArray(const AQM_MacroValue* value) {
    if (!value || value->GetValueType() != AQM_MacroValue::MVT_Array) return nullptr;
    return static_cast<const AQM_MacroValueArray*>(value);
}

// daterange(column, first, last): rows from the first day to the last, both included. The column is written by the
// author of the query; the days may come from a user. A day is either empty, for an open end, or written as 2024-03-31.
class DateRange : public AQM_I_MacroFunction {
public:
    // The expander matches this name exactly: DATERANGE would be another function.
    I18NString GetName() override { return "daterange"; }

    // What these two answer is information for whoever lists the functions. Nothing checks the arguments against it.
    void GetParameterTypes(std::vector<int>& types) override {
        types.insert(types.end(), 3, AQM_MacroValue::MVT_String);
    }
    int GetReturnType() override { return AQM_MacroValue::MVT_String; }

    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        const AQM_MacroValueArray* const frame = AsArray(arguments);
        if (!frame || frame->Size() != 3) return nullptr;
        // The last argument of the call is at index 0, so the column, written first, is at index 2.
        const AQM_MacroValueString* const column = AsString(frame->Get(2));
        const AQM_MacroValueString* const first = AsString(frame->Get(1));
        const AQM_MacroValueString* const last = AsString(frame->Get(0));
        // Null means that the function can do nothing with these arguments: the expansion fails with the function's
        // name, and no half-made statement leaves the library.
        if (!column || !IsDay(first) || !IsDay(last)) return nullptr;

        I18NString condition;
        if (!first->GetValue().empty()) condition += column->GetValue() + " >= '" + first->GetValue() + "'";
        if (!last->GetValue().empty()) {
            if (!condition.empty()) condition += " and ";
            condition += column->GetValue() + " <= '" + last->GetValue() + "'";
        }
        // The caller owns the new value. The arguments stay where they are.
        return new AQM_MacroValueString(condition.empty() ? I18NString("1 = 1") : condition);
    }

private:
    // Nothing but digits and hyphens gets into the statement, so that there is nothing to escape.
    static bool IsDay(const AQM_MacroValueString* text) {
        if (!text) return false;
        const std::string_view day = text->GetValue().bytes();
        const std::string_view shape = "dddd-dd-dd";
        return day.empty() ||
               std::equal(day.begin(), day.end(), shape.begin(), shape.end(), [](char byte, char wanted) {
                   return wanted == 'd' ? byte >= '0' && byte <= '9' : byte == wanted;
               });
    }
};

// sq(text or array), as the built-in one, but with the backslashes doubled as well. It refuses any other number of
// arguments, which the built-in one answers with two apostrophes.
class SingleQuoteWithBackslash : public AQM_I_MacroFunction {
public:
    // The name of a built-in function: under it this one is found instead.
    I18NString GetName() override { return "sq"; }
    void GetParameterTypes(std::vector<int>& types) override { types.push_back(AQM_MacroValue::MVT_String); }
    int GetReturnType() override { return AQM_MacroValue::MVT_String; }

    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        const AQM_MacroValueArray* const frame = AsArray(arguments);
        if (!frame || frame->Size() != 1) return nullptr;
        if (const AQM_MacroValueString* const text = AsString(frame->Get(0)))
            return new AQM_MacroValueString(Quoted(text->GetValue()));

        const AQM_MacroValueArray* const array = AsArray(frame->Get(0));
        if (!array) return nullptr;
        // The result is held by a smart pointer until it is handed over, since memory can run out on the way.
        auto result = std::make_unique<AQM_MacroValueArray>();
        for (const AQM_MacroValue* const element : array->GetValues())
            if (const AQM_MacroValueString* const text = AsString(element))
                result->AddValue(new AQM_MacroValueString(Quoted(text->GetValue())));
        return result.release();
    }

private:
    static I18NString Quoted(const I18NString& text) {
        const I18NString withBackslashes = AQE_SearchAndReplace(text, "\\", "\\\\");
        return "'" + AQE_SearchAndReplace(withBackslashes, "'", "''") + "'";
    }
};

void Show(AQM_I_MacroExpander& expander, const I18NString& text, AQU_ParameterMapApp& map) {
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&map);
    try {
        std::cout << expander.Expand(text, coordinator.get()) << '\n';
    } catch (const ZBLException& failure) {
        std::cout << "refused with code " << failure.getCode() << '\n';
    }
}

} // namespace

int main() {
    const I18NString query = R"(select o.order_id, c.name
from sales_order o join customer c on c.customer_id = o.customer_id
where #daterange('o.order_date', $from, $to)#
  and c.name = #sq($customer)#
  and o.channel in (#join(', ', sq(split(',', $channels)))#)
)";
    AQU_ParameterMapApp map("_env", 0);
    map.Set("from", "2024-03-01");
    map.Set("to", "");
    map.Set("customer", R"(O'Neill \ Sons)");
    map.Set("channels", "web,shop");

    // The functions stay the application's and outlive the expander: they are declared before it. They keep nothing
    // between two calls, so one object of each could serve the expanders of many threads. A block inside a parameter's
    // value, which is expanded in its turn, knows them too.
    DateRange dateRange;
    SingleQuoteWithBackslash singleQuote;
    AQM_I_MacroExpander expander;
    expander.AddFunction(&dateRange);

    std::cout << "-- before\n" << query << "\n-- after, with daterange\n";
    Show(expander, query, map);

    // From here on this expander uses the new sq; others keep the built-in one.
    expander.AddFunction(&singleQuote);
    std::cout << "-- after, with daterange and the other sq\n";
    Show(expander, query, map);

    map.Set("to", "2024-03-31' or '1' = '1");
    std::cout << "-- with a last day that is none\n";
    Show(expander, query, map);
    return std::cout.flush() ? 0 : 1;
}
