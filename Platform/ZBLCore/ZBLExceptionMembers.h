// Definitions of the members that every exception class has, for the class's source file. They can't stand in a base
// class: clone and hurl have to know the class, so that nothing is cut off a copy, and each class exports its own.
#pragma once

#include "ZBLCore/ZBLException.h"

// The operator for messages, clone, hurl and getThrowableName.
#define ZBL_DEFINE_EXCEPTION_MEMBERS(Class)                                                                            \
    Class& Class::operator<<(const ZBLMessageBase& message) {                                                          \
        ZBLException::operator<<(message);                                                                             \
        return *this;                                                                                                  \
    }                                                                                                                  \
    Class* Class::clone() const { return new Class(*this); }                                                           \
    void Class::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {                     \
        addBackTrace(where, component, macroName);                                                                     \
        throw Class(*this);                                                                                            \
    }                                                                                                                  \
    const char* Class::getThrowableName() const { return #Class; }

// The same, and the copies, the destructor and the four constructors from a code or a text, with or without a severity,
// which the base class has, too.
#define ZBL_DEFINE_EXCEPTION(Class, Base)                                                                              \
    Class::Class(const Class&) noexcept = default;                                                                     \
    Class::Class(long code) : Base(code) {}                                                                            \
    Class::Class(ZBLSeverity severity, long code) : Base(severity, code) {}                                            \
    Class::Class(const char* text) : Base(text) {}                                                                     \
    Class::Class(ZBLSeverity severity, const char* text) : Base(severity, text) {}                                     \
    Class::~Class() = default;                                                                                         \
    Class& Class::operator=(const Class&) noexcept = default;                                                          \
    ZBL_DEFINE_EXCEPTION_MEMBERS(Class)
