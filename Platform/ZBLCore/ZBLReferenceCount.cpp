#include "ZBLCore/ZBLReferenceCount.h"

ZBLThreadUnsafeReferenceCount::~ZBLThreadUnsafeReferenceCount() = default;

long ZBLThreadUnsafeReferenceCount::addReference() { return ++m_count; }

long ZBLThreadUnsafeReferenceCount::removeReference() {
    if (m_count == 0) return 0;
    const long left = --m_count;
    if (left == 0) cleanup();
    return left;
}

long ZBLThreadUnsafeReferenceCount::getReferenceCount() const { return m_count; }

void ZBLThreadUnsafeReferenceCount::cleanup() { delete this; }

ZBLReferenceCount::~ZBLReferenceCount() = default;
