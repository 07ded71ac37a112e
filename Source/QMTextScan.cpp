// A byte is one of the stops if a bit of its low half's table entry is a bit of its high half's: the stops lie in three
// columns of the ASCII table, and each column has a bit. So two look-ups and one "and" judge 32 bytes at once.
#include "QMTextScan.h"

#include <array>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

// A table instead of comparisons: one load judges a byte, whatever the number of stops.
constexpr std::array<bool, 256> MakeTable(const char* bytes) {
    std::array<bool, 256> table{};
    for (; *bytes; ++bytes)
        table[static_cast<unsigned char>(*bytes)] = true;
    return table;
}

constexpr std::array<bool, 256> kTextStops = MakeTable("#'\"[?/-");
constexpr std::array<bool, 256> kLineEnds = MakeTable("\r\n");

const char* FindByByte(const char* at, const char* end, const std::array<bool, 256>& wanted) {
    while (at != end && !wanted[static_cast<unsigned char>(*at)])
        ++at;
    return at;
}

#if defined(__x86_64__)

constexpr std::ptrdiff_t kStep = 32;

__attribute__((target("avx2"))) const char* FindTextStopWide(const char* at, const char* end) {
    // Column 2 of the ASCII table has bit 1, column 5 bit 2, column 3 bit 4. Bytes from 0x80 on look up a zero.
    const __m256i rows = _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 0, 1, 1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 1, 0, 5));
    const __m256i columns = _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 0, 1, 4, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    const __m256i half = _mm256_set1_epi8(15);
    for (; end - at >= kStep; at += kStep) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
        const __m256i row = _mm256_shuffle_epi8(rows, bytes);
        const __m256i column = _mm256_shuffle_epi8(columns, _mm256_and_si256(_mm256_srli_epi16(bytes, 4), half));
        const __m256i misses = _mm256_cmpeq_epi8(_mm256_and_si256(row, column), _mm256_setzero_si256());
        const auto hits = ~static_cast<unsigned>(_mm256_movemask_epi8(misses));
        if (hits != 0) return at + __builtin_ctz(hits);
    }
    return QMFindTextStopByByte(at, end);
}

__attribute__((target("avx2"))) const char* FindLineEndWide(const char* at, const char* end) {
    const __m256i lineFeed = _mm256_set1_epi8('\n');
    const __m256i carriageReturn = _mm256_set1_epi8('\r');
    for (; end - at >= kStep; at += kStep) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
        const auto hits = static_cast<unsigned>(_mm256_movemask_epi8(
            _mm256_or_si256(_mm256_cmpeq_epi8(bytes, lineFeed), _mm256_cmpeq_epi8(bytes, carriageReturn))));
        if (hits != 0) return at + __builtin_ctz(hits);
    }
    return QMFindLineEndByByte(at, end);
}

bool HasWideInstructions() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2");
}

const bool isWide = HasWideInstructions();

#endif

} // namespace

const char* QMFindTextStopByByte(const char* at, const char* end) { return FindByByte(at, end, kTextStops); }

const char* QMFindLineEndByByte(const char* at, const char* end) { return FindByByte(at, end, kLineEnds); }

const char* QMFindTextStop(const char* at, const char* end) {
#if defined(__x86_64__)
    if (isWide) return FindTextStopWide(at, end);
#endif
    return QMFindTextStopByByte(at, end);
}

const char* QMFindLineEnd(const char* at, const char* end) {
#if defined(__x86_64__)
    if (isWide) return FindLineEndWide(at, end);
#endif
    return QMFindLineEndByByte(at, end);
}
