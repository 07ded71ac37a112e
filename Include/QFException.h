// Exceptions that can carry a document fragment describing the failure, with factories that make one together with its
// message. One thread at a time; a copy shares the fragment with its original.
#pragma once

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"
#include "ZBLCore/ZBLMessage.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "BrindleApi.h"

// Severity, code and text as in QEException. The fragment is null until it is set.
class BRINDLE_API QFException : public ZBLException {
public:
    // Code 0, severity error.
    QFException();
    QFException(const QFException&) noexcept;
    explicit QFException(long code);
    QFException(ZBLSeverity severity, long code);
    explicit QFException(const char* text);
    QFException(ZBLSeverity severity, const char* text);
    ~QFException() override;
    QFException& operator=(const QFException&) noexcept;

    QFException& operator<<(const ZBLMessageBase& message);

    QFException* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;

    virtual void SetDOM(ZBLIDOM_Node fragment);
    virtual ZBLIDOM_Node GetDOM() const;

    // An exception of severity error with one message: the one given, or the one of a message file ("qemsgs",
    // "rqpmsgs", "mamsgs") with this number and these parameters in order. A plain int as the parameter is ambiguous.
    static QFException CreateException(long code, ZBLMessageComponents& message);
    static QFException CreateException(long code, const char* file, unsigned long number);
    static QFException CreateException(long code, const char* file, unsigned long number, unsigned long p1);
    static QFException CreateException(long code, const char* file, unsigned long number, long p1);
    static QFException CreateException(long code, const char* file, unsigned long number, const I18NString& p1);
    static QFException CreateException(long code, const char* file, unsigned long number, double p1);
    static QFException CreateException(long code, const char* file, unsigned long number, const I18NString& p1,
                                       double p2);
    static QFException CreateException(long code, const char* file, unsigned long number, const I18NString& p1,
                                       double p2, const I18NString& p3);

private:
    ZBLIDOM_Node m_dom;
};

class BRINDLE_API QSModelNotFound : public QFException {
public:
    QSModelNotFound(const QSModelNotFound&) noexcept;
    explicit QSModelNotFound(long code);
    QSModelNotFound(ZBLSeverity severity, long code);
    explicit QSModelNotFound(const char* text);
    QSModelNotFound(ZBLSeverity severity, const char* text);
    ~QSModelNotFound() override;
    QSModelNotFound& operator=(const QSModelNotFound&) noexcept;

    QSModelNotFound& operator<<(const ZBLMessageBase& message);

    QSModelNotFound* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;
};
