// The string bucket: strings in order, strings by number, and a hash index in front of the ordered one.
//
// The hash index answers all but a few calls. It looks at a bounded number of slots; a string that has found all of
// them taken isn't in it, and the ordered index settles the matter. So whatever strings are given, and be they made to
// collide, a call never costs more than a search in order.
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
    ~AQU_StringBucket() override;

    long GetIndex(const I18NString* text) override;
    long GetIndex(const I18NString& text) override;
    const I18NString* GetString(long number) const override;

private:
    struct Entry {
        const I18NString* text;
        std::size_t hash;
    };
    struct Slot {
        std::size_t hash;
        long number;
    };

    void InsertStringIndex(const I18NString* text, long number);
    bool Find(const I18NString* text, std::size_t hash, long& number) const;
    void EnterHash(long number, std::size_t hash);
    void GrowHash();

    std::map<const I18NString*, long, AQU_StringBucketLess> m_stringIndex; // owns its keys
    std::vector<Entry> m_numberIndex;
    std::vector<Slot> m_slots; // a string's stands where its hash says or behind; a power of two of them
};
