// The search for the bytes at which plain text can stop, 32 at a time where the processor can.
#pragma once

#include <cstddef>

// The first byte in [at, end) that may end plain text or begin a form in which '#' is plain: one of # ' " [ ? / -.
// `end` if there is none.
const char* QMFindTextStop(const char* at, const char* end);

// The first line feed or carriage return in [at, end); `end` if there is none.
const char* QMFindLineEnd(const char* at, const char* end);

// The same byte by byte, as on a processor without the wide instructions.
const char* QMFindTextStopByByte(const char* at, const char* end);
const char* QMFindLineEndByByte(const char* at, const char* end);
