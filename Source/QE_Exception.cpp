// The engine's exception classes and QEAddMessages.
#include "QEException.h"

#include <algorithm>
#include <array>

#include "Mortise/AUT_Text.h"
#include "ZBLCore/ZBLExceptionMembers.h"

#include "QERes.h"

#include "QE_ResourceTable.h"

QEMessage::QEMessage(unsigned long number) : ZBLMessage(QERes::getString(kQEStringMessageFile), number) {}

QEMessage::~QEMessage() = default;

ZBL_DEFINE_EXCEPTION(QEException, ZBLException)

ZBL_DEFINE_EXCEPTION(QEExceptionExtended, QEException)

std::int32_t QEExceptionExtended::GetPosition() const { return position; }

void QEExceptionExtended::SetPosition(std::int32_t newPosition) { position = newPosition; }

std::int32_t QEExceptionExtended::GetToPosition() const { return toPosition; }

void QEExceptionExtended::SetToPosition(std::int32_t newToPosition) { toPosition = newToPosition; }

int QEExceptionExtended::GetIsMacro() const { return isMacro; }

void QEExceptionExtended::SetIsMacro(int newIsMacro) { isMacro = newIsMacro; }

void QEAddMessages(ZBLException& exception, long messageNumber, int parameterCount, const I18NString& p1,
                   const I18NString& p2, const I18NString& p3, const I18NString& p4, const I18NString& p5,
                   const I18NString& p6) {
    const std::array<const I18NString*, 6> parameters{&p1, &p2, &p3, &p4, &p5, &p6};
    QEMessage message(static_cast<unsigned long>(messageNumber));
    const int count = std::min(parameterCount, static_cast<int>(parameters.size()));
    for (int i = 0; i < count; ++i)
        message << ZBLMessageParm(*parameters[static_cast<std::size_t>(i)]);
    exception << message;
}

void QEAddMessages(ZBLException& exception, const I18NString& text, int, const I18NString& p1, const I18NString& p2,
                   const I18NString& p3, const I18NString& p4, const I18NString& p5, const I18NString& p6) {
    const I18NString& none = AUT_GetEmptyString();
    I18NString words = text;
    AUT_SimpleSubstituteText(words, p1, p2, p3, p4, p5, p6, none, none, none, none, none, none, none, none, none, none);
    exception << ZBLMessageString(words);
}
