// The file is read event by event, so that a value of a wrong type is refused where it begins: nothing is ever built of
// it, and its depth doesn't matter.
#include "ParameterFile.h"

#include <string_view>

#include <nlohmann/json.hpp>

#include "Diagnostic.h"
#include "JsonFailure.h"

namespace brindle_tool {
namespace {

using Json = nlohmann::json;

class ParameterReader : public nlohmann::json_sax<Json> {
public:
    explicit ParameterReader(const Input& input) : m_input(input) {}

    ParameterTable table;

    bool null() override { return Refuse("null"); }
    bool boolean(bool value) override { return Refuse(value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return Refuse("the number " + std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Refuse("the number " + std::to_string(value)); }
    bool number_float(number_float_t, const string_t& text) override { return Refuse("the number " + text); }
    bool binary(binary_t&) override { return Refuse("binary data"); }

    bool string(string_t& value) override {
        if (m_level == kFile) return Refuse("a text");
        if (!m_inList) AddName();
        m_values->push_back(I18NString(std::string_view(value)));
        return true;
    }

    bool key(string_t& name) override {
        (m_level == kMap ? m_innerKey : m_key) = name;
        return true;
    }

    bool start_object(std::size_t) override {
        if (m_level == kMap || m_inList) return Refuse("an object");
        m_level = m_level == kFile ? kTop : kMap;
        return true;
    }
    bool end_object() override {
        m_level = m_level == kMap ? kTop : kFile;
        return true;
    }

    bool start_array(std::size_t) override {
        if (m_level == kFile || m_inList) return Refuse("a list");
        AddName();
        m_inList = true;
        return true;
    }
    bool end_array() override {
        m_inList = false;
        return true;
    }

    bool parse_error(std::size_t readBytes, const std::string&, const Json::exception& error) override {
        ThrowJsonFailure(m_input, readBytes, error.what());
    }

private:
    enum ELevel { kFile, kTop, kMap };

    void AddName() {
        const std::string_view map = m_level == kMap ? std::string_view(m_key) : kEnvironmentMap;
        const std::string_view key = m_level == kMap ? m_innerKey : m_key;
        const auto [entry, added] = table.try_emplace({I18NString(map), I18NString(key)});
        if (!added) throw Failure({m_input.name, "the value at '" + Where() + "' is given twice"});
        m_values = &entry->second;
    }

    // The place in the form of a JSON pointer.
    std::string Where() const {
        std::string where;
        if (m_level != kFile) AppendStep(where, m_key);
        if (m_level == kMap) AppendStep(where, m_innerKey);
        if (m_inList) AppendStep(where, std::to_string(m_values->size()));
        return Printable(where);
    }

    static void AppendStep(std::string& where, const std::string& step) {
        where += '/';
        for (const char byte : step) {
            if (byte == '~' || byte == '/') {
                where += byte == '~' ? "~0" : "~1";
            } else {
                where += byte;
            }
        }
    }

    bool Refuse(const std::string& found) const {
        const char* const expected = m_level == kFile  ? "an object"
                                     : m_inList        ? "a text"
                                     : m_level == kMap ? "a text or a list of texts"
                                                       : "a text, a list of texts or an object";
        const std::string place = m_level == kFile ? "" : " at '" + Where() + "'";
        throw Failure({m_input.name, std::string("expected ") + expected + place + ", found " + Printable(found)});
    }

    const Input& m_input;
    ELevel m_level = kFile;
    bool m_inList = false;
    std::string m_key;      // in the file's own object
    std::string m_innerKey; // in the object of a map
    std::vector<I18NString>* m_values = nullptr;
};

} // namespace

std::string ToText(const ParameterName& name) {
    const std::string key = Printable(name.key.bytes());
    if (name.map == I18NString(kEnvironmentMap)) return "'" + key + "'";
    return "'" + Printable(name.map.bytes()) + "{" + key + "}'";
}

ParameterTable ParseParameters(const Input& input) {
    ParameterReader reader(input);
    const std::string_view bytes = input.text.bytes();
    Json::sax_parse(bytes.begin(), bytes.end(), &reader);
    return std::move(reader.table);
}

ParameterTable ReadParameterFile(const std::string& file) { return ParseParameters(ReadInput(file)); }

} // namespace brindle_tool
