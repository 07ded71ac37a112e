#include "ResultFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "Diagnostic.h"

namespace brindle_tool {
namespace {

constexpr const char* kNullWord = "NULL";
constexpr const char* kColumnGap = "  ";
constexpr int kRealDigitsInTable = 15;

std::string BlobText(const Blob& blob) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text = "x'";
    for (const char byte : blob.bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text + "'";
}

const char* InfinityText(double value) { return value < 0 ? "-Inf" : "Inf"; }

// With all digits that tell it from its neighbours.
std::string ExactReal(double value) { return std::isinf(value) ? InfinityText(value) : nlohmann::json(value).dump(); }

std::string RoundedReal(double value) {
    if (std::isinf(value)) return InfinityText(value);
    char buffer[32];
    const auto end =
        std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::general, kRealDigitsInTable);
    const std::string text(buffer, end.ptr);
    return text.find_first_not_of("-0123456789") == text.npos ? text + ".0" : text;
}

// ---- table

struct Cell {
    std::string text;
    std::size_t width = 0; // in characters
    enum EKind { kText, kNumber, kNull } kind = kText;
};

Cell VisibleText(std::string_view text, Cell::EKind kind = Cell::kText) {
    Cell cell{"", 0, kind};
    for (std::size_t at = 0; at < text.size(); ++cell.width) {
        const std::string_view character = CharacterAt(text, at);
        const auto lead = static_cast<unsigned char>(character.front());
        if (lead < 0x20 || lead == 0x7F) {
            // U+2400 and on hold a picture for each of them.
            cell.text += {'\xE2', '\x90', static_cast<char>(lead == 0x7F ? 0xA1 : 0x80 + lead)};
        } else {
            cell.text += IsControl(character) ? "\xEF\xBF\xBD" : character;
        }
        at += character.size();
    }
    return cell;
}

struct MakeCell {
    Cell operator()(std::monostate) const { return VisibleText(kNullWord, Cell::kNull); }
    Cell operator()(std::int64_t value) const { return VisibleText(std::to_string(value), Cell::kNumber); }
    Cell operator()(double value) const { return VisibleText(RoundedReal(value), Cell::kNumber); }
    Cell operator()(const std::string& text) const { return VisibleText(text); }
    Cell operator()(const Blob& blob) const { return VisibleText(BlobText(blob)); }
};

class TableWriter : public ResultWriter {
public:
    void SetColumns(const std::vector<std::string>& names) override {
        for (const std::string& name : names)
            m_columns.push_back({VisibleText(name)});
        for (Column& column : m_columns)
            column.width = column.header.width;
    }

    void AddRow(const std::vector<Value>& row) override {
        std::vector<Cell> cells;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const Cell& cell = cells.emplace_back(std::visit(MakeCell(), row[i]));
            m_columns[i].width = std::max(m_columns[i].width, cell.width);
            m_columns[i].numbers |= cell.kind == Cell::kNumber;
            m_columns[i].texts |= cell.kind == Cell::kText;
        }
        m_rows.push_back(std::move(cells));
    }

    std::string TakeText() override {
        if (m_columns.empty()) return "";
        std::vector<Cell> headers;
        std::vector<Cell> lines;
        for (const Column& column : m_columns) {
            headers.push_back(column.header);
            lines.push_back({std::string(column.width, '-'), column.width});
        }
        std::string text;
        AddLine(text, headers);
        AddLine(text, lines);
        for (const std::vector<Cell>& row : m_rows)
            AddLine(text, row);
        return text;
    }

private:
    struct Column {
        Cell header;
        std::size_t width = 0;
        bool numbers = false;
        bool texts = false;
    };

    // Header and NULL stand where the column's numbers do if it has nothing else.
    void AddLine(std::string& text, const std::vector<Cell>& cells) const {
        std::size_t owed = 0; // blanks, never at the end of a line
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Column& column = m_columns[i];
            const bool right = cells[i].kind == Cell::kNumber || (column.numbers && !column.texts);
            const std::size_t rest = column.width - cells[i].width;
            if (i > 0) owed += std::string_view(kColumnGap).size();
            if (cells[i].width > 0) text.append(owed + (right ? rest : 0), ' ') += cells[i].text;
            owed = cells[i].width > 0 ? (right ? 0 : rest) : owed + rest;
        }
        text += '\n';
    }

    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};

// ---- csv

std::string CsvField(const std::string& text) {
    if (!text.empty() && text.find_first_of("\",\r\n") == text.npos) return text;
    std::string field = "\"";
    for (const char byte : text)
        field += byte == '"' ? "\"\"" : std::string(1, byte);
    return field + "\"";
}

struct MakeCsvField {
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return ExactReal(value); }
    std::string operator()(const std::string& text) const { return CsvField(text); }
    std::string operator()(const Blob& blob) const { return BlobText(blob); }
};

class CsvWriter : public ResultWriter {
public:
    void SetColumns(const std::vector<std::string>& names) override { AddLine(names, CsvField); }
    void AddRow(const std::vector<Value>& row) override {
        AddLine(row, [](const Value& value) { return std::visit(MakeCsvField(), value); });
    }
    std::string TakeText() override { return std::move(m_text); }

private:
    template <class Values, class MakeField>
    void AddLine(const Values& values, MakeField makeField) {
        if (values.empty()) return;
        for (const auto& value : values)
            m_text.append(&value == &values.front() ? "" : ",") += makeField(value);
        m_text += "\r\n";
    }

    std::string m_text;
};

// ---- json

struct MakeJson {
    nlohmann::json operator()(std::monostate) const { return nullptr; }
    nlohmann::json operator()(std::int64_t value) const { return value; }
    nlohmann::json operator()(double value) const {
        return std::isinf(value) ? nlohmann::json(InfinityText(value)) : nlohmann::json(value);
    }
    nlohmann::json operator()(const std::string& text) const { return text; }
    nlohmann::json operator()(const Blob& blob) const { return BlobText(blob); }
};

class JsonWriter : public ResultWriter {
public:
    void SetColumns(const std::vector<std::string>& names) override {
        // A name made for a repetition must not be that of another column.
        std::set<std::string> taken;
        const std::set<std::string> given(names.begin(), names.end());
        for (const std::string& name : names) {
            std::string key = name;
            for (int number = 2; (number > 2 && given.count(key) > 0) || !taken.insert(key).second; ++number)
                key = name + "_" + std::to_string(number);
            m_keys.push_back(nlohmann::json(key).dump() + ":");
        }
    }

    void AddRow(const std::vector<Value>& row) override {
        m_text += m_text.empty() ? "[{" : ",\n{";
        for (std::size_t i = 0; i < row.size(); ++i)
            m_text.append(i == 0 ? "" : ",").append(m_keys[i]) += std::visit(MakeJson(), row[i]).dump();
        m_text += '}';
    }

    std::string TakeText() override { return m_text.empty() ? "[]\n" : std::move(m_text) + "]\n"; }

private:
    std::vector<std::string> m_keys;
    std::string m_text;
};

// ----

template <class Writer>
std::unique_ptr<ResultWriter> Make() {
    return std::make_unique<Writer>();
}

struct Format {
    const char* name;
    std::unique_ptr<ResultWriter> (*make)();
};

constexpr Format kFormats[] = {{"table", Make<TableWriter>}, {"csv", Make<CsvWriter>}, {"json", Make<JsonWriter>}};

} // namespace

std::vector<std::string> FormatNames() {
    std::vector<std::string> names;
    for (const Format& format : kFormats)
        names.emplace_back(format.name);
    return names;
}

std::unique_ptr<ResultWriter> MakeResultWriter(const std::string& format) {
    for (const Format& known : kFormats)
        if (format == known.name) return known.make();
    return nullptr;
}

} // namespace brindle_tool
