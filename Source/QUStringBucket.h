// The string bucket: strings by number, and a hash index and an ordered one that find the number.
//
// The hash index answers all but a few calls. It looks at a bounded number of slots; a string that has found all of
// them taken isn't in it, and the ordered index settles the matter. That is filled only then, since putting each string
// in its place takes longer than all else. So whatever strings are given, and be they made to collide, calls cost on
// average little more than a search in order.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "AQU_I_StringBucket.h"

// Orders strings by their pointers, null behind all strings.
struct AQU_StringBucketLess {
    bool operator()(const I18NString* a, const I18NString* b) const {
        if (a == nullptr) return false;
        return b == nullptr || *a < *b;
    }
};

class AQU_StringBucket : public AQU_I_StringBucket {
public:
    AQU_StringBucket();

    long GetIndex(const I18NString* text) override;
    long GetIndex(const I18NString& text) override;
    const I18NString* GetString(long number) const override;

private:
    struct Entry {
        std::unique_ptr<const I18NString> text;
        std::size_t hash;
    };
    struct Slot {
        std::size_t hash;
        long number;
    };

    void InsertStringIndex(const I18NString* text, long number);
    bool Find(const I18NString* text, std::size_t hash, long& number);
    void CompleteStringIndex();
    void EnterHash(long number, std::size_t hash);
    void GrowHash();

    std::map<const I18NString*, long, AQU_StringBucketLess> m_stringIndex; // of the first so many numbers
    std::vector<Entry> m_numberIndex;
    std::vector<Slot> m_slots; // a string's is the one that its hash names, or one behind it; a power of two
};
