// A handle that shares the ownership of an object with its copies. The object needs no counter of its own: the handles
// count themselves in a small block beside it.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

#include "PlatformApi.h"

// Memory for the counter of a group of handles. Getting it raises std::bad_alloc if there is none; releasing null does
// nothing.
BRINDLE_PLATFORM_API void* AUT_RefPtrGetMemory(std::size_t size);
BRINDLE_PLATFORM_API void AUT_RefPtrReleaseMemory(void* memory) noexcept;

// Null by default. The last handle on an object deletes it. The counter is a plain number, so a handle and its copies
// stay on one thread at a time. `*` and `->` of a null handle are not allowed.
template <class T>
class AUT_RefPtr {
public:
    AUT_RefPtr() noexcept = default;
    // Takes the object over, and deletes it if the handle can't be made.
    explicit AUT_RefPtr(T* object) : m_object(object) {
        if (object == nullptr) return;
        try {
            m_count = ::new (AUT_RefPtrGetMemory(sizeof(long))) long(1);
        } catch (...) {
            delete object;
            throw;
        }
    }
    AUT_RefPtr(const AUT_RefPtr& other) noexcept : m_object(other.m_object), m_count(other.m_count) { addHandle(); }
    AUT_RefPtr(AUT_RefPtr&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr)), m_count(std::exchange(other.m_count, nullptr)) {}

    template <class U>
    requires(!std::is_same_v<U, T> && std::is_convertible_v<U*, T*>) AUT_RefPtr(const AUT_RefPtr<U>& other)
    noexcept : m_object(other.m_object), m_count(other.m_count) {
        static_assert(std::is_same_v<std::remove_cv_t<T>, std::remove_cv_t<U>> || std::has_virtual_destructor_v<T>,
                      "the last handle deletes the object through its own type");
        addHandle();
    }

    ~AUT_RefPtr() {
        if (m_count == nullptr || --*m_count > 0) return;
        delete m_object;
        AUT_RefPtrReleaseMemory(m_count);
    }

    // Takes the new object before it lets the old one go.
    AUT_RefPtr& operator=(AUT_RefPtr other) noexcept {
        std::swap(m_object, other.m_object);
        std::swap(m_count, other.m_count);
        return *this;
    }

    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* get() const noexcept { return m_object; }
    bool isNull() const noexcept { return m_object == nullptr; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    template <class U>
    bool operator==(const AUT_RefPtr<U>& other) const noexcept {
        return m_object == other.m_object;
    }

private:
    template <class U>
    friend class AUT_RefPtr;

    void addHandle() noexcept {
        if (m_count != nullptr) ++*m_count;
    }

    T* m_object = nullptr;
    long* m_count = nullptr;
};
