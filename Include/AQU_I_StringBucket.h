// Interning of strings: each distinct string gets a small number that stands for it.
#pragma once

#include "Mortise/AUT_RefPtr.h"
#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// Numbers are given out from 0 without gaps, in order of first appearance. The bucket keeps a copy of each string and
// only grows; the last handle on it frees them all. No locks: a bucket and its handles belong to one thread at a time.
class BRINDLE_API AQU_I_StringBucket {
public:
    virtual ~AQU_I_StringBucket();
    AQU_I_StringBucket(const AQU_I_StringBucket&) = delete;
    AQU_I_StringBucket& operator=(const AQU_I_StringBucket&) = delete;

    // A new, empty bucket.
    static AUT_RefPtr<AQU_I_StringBucket> Create();

    // The string's number, a new one at its first appearance. Null is an entry of its own, different from the empty
    // string. The caller's string may go afterwards.
    virtual long GetIndex(const I18NString* text) = 0;
    virtual long GetIndex(const I18NString& text) = 0;

    // The string with this number, null for the number of null. It is the bucket's and lives as long as the bucket. A
    // number that was never given out ends in a QEException, code 2100, message 903218748 (the number).
    virtual const I18NString* GetString(long number) const = 0;

protected:
    AQU_I_StringBucket();
};
