#include "Database.h"

#include <cstring>
#include <new>
#include <string_view>
#include <system_error>

#include <sqlite3.h>

#include "Diagnostic.h"

namespace brindle_tool {
namespace {

constexpr int kWaitForWriterMs = 2000;

[[noreturn]] void RefuseDatabase(const std::string& file, sqlite3* handle) {
    if (handle == nullptr || sqlite3_errcode(handle) == SQLITE_NOMEM) throw std::bad_alloc();
    const int reason = sqlite3_system_errno(handle);
    const std::string what = reason != 0 ? std::generic_category().message(reason) : sqlite3_errmsg(handle);
    throw Failure({Printable(file), "cannot open the database: " + Printable(what)});
}

std::string WellFormed(const void* bytes, int size) {
    const std::string_view text(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
    return std::string(I18NString(text).bytes());
}

} // namespace

void Database::Closer::operator()(sqlite3* handle) const { sqlite3_close(handle); }
void Statement::Finalizer::operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }

Database::Database(const std::string& file) {
    // Behind a slash neither ":memory:" nor "file:" nor the empty name means anything special.
    const std::string path = file.starts_with('/') ? file : "./" + file;
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    m_handle.reset(opened);
    if (result != SQLITE_OK) RefuseDatabase(file, opened);
    sqlite3_busy_timeout(opened, kWaitForWriterMs);
    // The file is first read now: what is no database is told apart from a statement that fails.
    if (sqlite3_exec(opened, "select 1 from sqlite_schema", nullptr, nullptr, nullptr) != SQLITE_OK)
        RefuseDatabase(file, opened);
}

Statement::Statement(const Database& database, const Input& expanded)
    : m_database(database.GetHandle()), m_expanded(expanded) {
    const std::string text(expanded.text.bytes());
    if (const std::size_t zero = text.find('\0'); zero != text.npos)
        RefuseAt(zero, "a statement cannot hold the character U+0000");

    sqlite3_stmt* compiled = nullptr;
    const char* tail = nullptr;
    const int result = sqlite3_prepare_v2(m_database, text.c_str(), -1, &compiled, &tail);
    m_handle.reset(compiled);
    Require(result, text.c_str());
    if (compiled == nullptr) throw Failure({expanded.name, "the expanded text holds no statement"});

    sqlite3_stmt* surplus = nullptr;
    const bool onlyBlank = sqlite3_prepare_v2(m_database, tail, -1, &surplus, nullptr) == SQLITE_OK && !surplus;
    sqlite3_finalize(surplus);
    if (!onlyBlank) {
        tail += std::strspn(tail, "; \t\n\f\r");
        RefuseAt(static_cast<std::size_t>(tail - text.c_str()), "expected one statement, found a second one");
    }
    if (sqlite3_bind_parameter_count(compiled) > 0) {
        const char* const name = sqlite3_bind_parameter_name(compiled, 1);
        throw Failure({expanded.name, "expected a statement without parameters of its own, found '" +
                                          Printable(name == nullptr ? "?" : name) + "'"});
    }
    if (sqlite3_stmt_readonly(compiled) == 0)
        throw Failure({expanded.name, "expected a statement that only reads the database"});
}

void Statement::Require(int result, const char* text) const {
    if (result == SQLITE_OK) return;
    if (result == SQLITE_NOMEM) throw std::bad_alloc();
    const std::string what = Printable(sqlite3_errmsg(m_database));
    const int byte = sqlite3_error_offset(m_database);
    if (text == nullptr || byte < 0) throw Failure({m_expanded.name, "the statement failed: " + what});
    RefuseAt(static_cast<std::size_t>(byte), what);
}

void Statement::RefuseAt(std::size_t byte, const std::string& what) const {
    const Place place = FindPlaceOfByte(m_expanded.text, byte);
    throw Failure(
        {m_expanded.name, "in the expanded text at " + ToText(place) + ": " + what, Excerpt(m_expanded.text, place)});
}

std::vector<std::string> Statement::GetColumnNames() const {
    std::vector<std::string> names;
    for (int i = 0; i < sqlite3_column_count(m_handle.get()); ++i) {
        const char* const name = sqlite3_column_name(m_handle.get(), i);
        if (name == nullptr) throw std::bad_alloc();
        names.push_back(WellFormed(name, static_cast<int>(std::strlen(name))));
    }
    return names;
}

bool Statement::Step() {
    const int result = sqlite3_step(m_handle.get());
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) Require(result, nullptr);
    return false;
}

std::vector<Value> Statement::GetRow() const {
    std::vector<Value> row;
    for (int i = 0; i < sqlite3_column_count(m_handle.get()); ++i)
        row.push_back(GetValue(i));
    return row;
}

Value Statement::GetValue(int column) const {
    sqlite3_stmt* const handle = m_handle.get();
    switch (sqlite3_column_type(handle, column)) {
    case SQLITE_INTEGER:
        return sqlite3_column_int64(handle, column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(handle, column);
    case SQLITE_NULL:
        return {};
    case SQLITE_TEXT: {
        const void* const text = sqlite3_column_text(handle, column);
        if (text == nullptr) throw std::bad_alloc();
        return WellFormed(text, sqlite3_column_bytes(handle, column));
    }
    default: {
        const void* const bytes = sqlite3_column_blob(handle, column); // null for an empty one
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle, column));
        return Blob{bytes == nullptr ? std::string() : std::string(static_cast<const char*>(bytes), size)};
    }
    }
}

} // namespace brindle_tool
