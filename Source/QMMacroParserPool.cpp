// The pool is a list under one lock. Sets move between it and a lease by splicing, which takes no memory.
#include "QMMacroParserPool.h"

#include <new>

#include "ZBLCore/ZBLThread.h"

namespace {

using SetList = std::list<std::unique_ptr<QMX_ParserSet>>;

ZBLThreadCriticalSection poolSection(1);
SetList* pool = nullptr; // guarded by poolSection

} // namespace

QMX_ParserSet::QMX_ParserSet()
    : errorStream(&errorBuffer), error(errorStream), input(&error), lexer(input, symbols, error),
      parser(lexer, symbols, error) {
    error.SetLocation(&input);
}

void QMX_ParserSet::Run(std::string_view text, EMacroRunMode mode) {
    input.SetText(text.data(), text.size());
    lexer.Start(mode);
    parser.Run();
}

void QMX_ParserSet::Reset() {
    errorBuffer.Clear();
    errorStream.clear();
    error.Reset();
    parser.Reset();
    lexer.Reset();
    input.Reset();
    symbols.Shrink();
}

long QMX_StartParserPool() {
    const ZBLThreadGuard guard(poolSection);
    if (!pool) pool = new (std::nothrow) SetList;
    return 0;
}

long QMX_EndParserPool() {
    const ZBLThreadGuard guard(poolSection);
    delete pool;
    pool = nullptr;
    return 0;
}

std::size_t QMX_CountPooledSets() {
    const ZBLThreadGuard guard(poolSection);
    return pool ? pool->size() : 0;
}

QMX_ParserSetLease::QMX_ParserSetLease() {
    {
        const ZBLThreadGuard guard(poolSection);
        if (!pool) QMX_StartParserPool();
        if (pool && !pool->empty()) m_set.splice(m_set.end(), *pool, pool->begin());
    }
    if (m_set.empty()) m_set.push_back(std::make_unique<QMX_ParserSet>());
}

QMX_ParserSetLease::~QMX_ParserSetLease() {
    try {
        m_set.front()->Reset();
    } catch (...) {
        return; // a set that can't be made as new goes with the lease
    }
    const ZBLThreadGuard guard(poolSection);
    if (pool) pool->splice(pool->end(), m_set);
}
