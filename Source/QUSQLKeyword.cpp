// Keyword lookup. Each word list becomes an ordered set of lower-cased words on its first use.
#include "AQU_SQLKeyword.h"

#include <atomic>
#include <memory>
#include <set>
#include <span>

#include "Mortise/AUT_Text.h"
#include "ZBLCore/ZBLThread.h"

#include "QEMadeOnce.h"
#include "QUSQLKeywordTable.h"

namespace {

using WordSet = std::set<I18NString>;

constinit std::atomic<const WordSet*> reservedWords{nullptr};
constinit std::atomic<const WordSet*> queryLanguageWords{nullptr};
constinit ZBLThreadCriticalSection loadLock;

I18NString Lowered(const I18NString& word) { return AUT_ToLower(word, AUT_DefaultLocale()); }

const WordSet& Loaded(std::atomic<const WordSet*>& published, std::span<const char* const> words) {
    return QEMadeOnce(published, loadLock, [words] {
        auto filled = std::make_unique<WordSet>();
        for (const char* word : words)
            filled->insert(Lowered(word));
        return filled;
    });
}

bool IsReserved(const I18NString& lowered) { return Loaded(reservedWords, kSqlReservedWords).contains(lowered); }

} // namespace

bool AQU_SQLKeyword::IsReservedKeyword(const I18NString& word) { return IsReserved(Lowered(word)); }

bool AQU_SQLKeyword::IsKeyword(const I18NString& word) {
    const I18NString lowered = Lowered(word);
    return IsReserved(lowered) || Loaded(queryLanguageWords, kQueryLanguageWords).contains(lowered);
}
