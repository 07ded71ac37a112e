// A pointer that holds one reference on an object derived from ZBLReferenceCount.
#pragma once

#include <utility>

// Null by default. Assignment takes the new reference before it drops the old one. `*` and `->` of a null pointer are
// not allowed. All pointers to one object stay on one thread at a time.
template <class T>
class ZBLSmartPointer {
public:
    ZBLSmartPointer() noexcept = default;
    ZBLSmartPointer(T* object) : m_object(object) {
        if (m_object != nullptr) m_object->addReference();
    }
    ZBLSmartPointer(const ZBLSmartPointer& other) : ZBLSmartPointer(other.m_object) {}
    ZBLSmartPointer(ZBLSmartPointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~ZBLSmartPointer() {
        if (m_object != nullptr) m_object->removeReference();
    }

    ZBLSmartPointer& operator=(ZBLSmartPointer other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* get() const noexcept { return m_object; }
    bool isNull() const noexcept { return m_object == nullptr; }
    explicit operator bool() const noexcept { return m_object != nullptr; }
    friend bool operator==(const ZBLSmartPointer& left, const ZBLSmartPointer& right) noexcept {
        return left.m_object == right.m_object;
    }

private:
    T* m_object = nullptr;
};
