// SQLite behind two classes: a database that is open for reading, and one statement with its rows. Every failure is a
// Failure; one of the statement shows its place in the expanded text if SQLite knows it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "Files.h"

struct sqlite3;
struct sqlite3_stmt;

namespace brindle_tool {

struct Blob {
    std::string bytes;
};

// NULL, integer, real, well-formed text, blob.
using Value = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;

class Database {
public:
    // The name is that of a file whatever it looks like; a missing file isn't created.
    explicit Database(const std::string& file);

    sqlite3* GetHandle() const { return m_handle.get(); }

private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

class Statement {
public:
    // The text must hold exactly one statement, which only reads and has no parameters of its own: SQLite would take
    // those for NULL. Both arguments must outlive the statement; the name is that of the text before its expansion.
    Statement(const Database& database, const Input& expanded);

    std::vector<std::string> GetColumnNames() const;

    // Goes to the next row; false behind the last one.
    bool Step();
    std::vector<Value> GetRow() const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const;
    };

    // Never returns for a result other than success; `text` is the one that was compiled.
    void Require(int result, const char* text) const;
    [[noreturn]] void RefuseAt(std::size_t byte, const std::string& what) const;
    Value GetValue(int column) const;

    sqlite3* m_database;
    const Input& m_expanded;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};

} // namespace brindle_tool
