// Parser sets and the pool that keeps them: a scanner, a parser and what both stand on cost far more to build than a
// typical macro block costs to expand, so a set serves one run after the other for the life of the library.
#pragma once

#include <list>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "QMMacroExpanderLexer.h"
#include "QMMacroExpanderParser.h"
#include "QMMacroToken.h"
#include "QUYyError.h"
#include "QUYyInputString.h"

// A buffer of fixed size for the text of errors; what doesn't fit is dropped.
class QMX_ErrorBuffer : public std::streambuf {
public:
    QMX_ErrorBuffer() { Clear(); }
    std::string_view GetContent() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }
    void Clear() { setp(m_bytes, m_bytes + sizeof m_bytes); }

protected:
    int_type overflow(int_type byte) override { return traits_type::not_eof(byte); }

private:
    char m_bytes[32768];
};

// Everything one run needs. The members are made in this order and refer to those before them.
struct QMX_ParserSet {
    QMX_ErrorBuffer errorBuffer;
    std::ostream errorStream;
    QMX_SymbolTable symbols;
    AQU_YYError error;
    AQU_YYInputString input;
    QMX_MacroExpanderLexer lexer;
    QMX_MacroExpanderParser parser;

    QMX_ParserSet();
    QMX_ParserSet(const QMX_ParserSet&) = delete;
    QMX_ParserSet& operator=(const QMX_ParserSet&) = delete;

    // Reads the text to its end, or to the exception of its first error. The bytes are borrowed until Reset.
    void Run(std::string_view text, EMacroRunMode mode);
    void Reset();
};

// A set taken from the pool for one run; it is reset and given back at the end of the scope, also when something
// throws. A set that comes back when the pool has ended is freed. Any thread; the pool is locked while taking and
// giving back.
class QMX_ParserSetLease {
public:
    QMX_ParserSetLease();
    QMX_ParserSetLease(const QMX_ParserSetLease&) = delete;
    QMX_ParserSetLease& operator=(const QMX_ParserSetLease&) = delete;
    ~QMX_ParserSetLease();
    QMX_ParserSet* operator->() const { return m_set.front().get(); }
    QMX_ParserSet& operator*() const { return *m_set.front(); }

private:
    // A list of one: sets move between it and the pool's list without an allocation that could fail.
    std::list<std::unique_ptr<QMX_ParserSet>> m_set;
};

// Start and end of the pool; the first lease starts it, too. Both answer 0; a start of a started pool and an end of an
// ended one do nothing.
long QMX_StartParserPool();
long QMX_EndParserPool();
// How many sets wait in the pool.
std::size_t QMX_CountPooledSets();
