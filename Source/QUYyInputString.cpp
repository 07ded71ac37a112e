// The scanner knows byte offsets alone; the characters up to an error are counted when it is reported.
#include "QUYyInputString.h"

#include <cstdint>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "ZBLCore/I18NString.h"

#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QUYyError.h"

AQU_YYInputString::AQU_YYInputString(AQU_YYError* error) : m_error(error) {}

AQU_YYInputString::AQU_YYInputString(const AQU_YYInputString& other) : m_error(other.m_error) {
    SetText(other.GetText().data(), other.GetText().size());
}

void AQU_YYInputString::yy_loc_print_self(yy_err_obj*) {
    const std::string_view read = GetText().substr(0, GetTokenEnd());
    const I18NString text(read);
    const long position = static_cast<long>(text.length()) + 1;
    m_error->SetPosition(static_cast<std::int32_t>(position));

    const int limit = AUT_I_UserConfiguration::Create(1)->GetInteger("General Options", "ExprDisplayLimit", 0);
    if (limit >= 1 && position > limit) {
        const long skipped = position - limit;
        QEMessage message(kQEMsgMacroErrorAtCut);
        message << ZBLMessageParm(position) << ZBLMessageParm(skipped)
                << ZBLMessageParm(I18NString(read.substr(static_cast<std::size_t>(skipped))));
        m_error->SetLocationMessage(message);
    } else {
        QEMessage message(kQEMsgMacroErrorAt);
        message << ZBLMessageParm(position) << ZBLMessageParm(text);
        m_error->SetLocationMessage(message);
    }
}

void AQU_YYInputString::Reset() { SetText(nullptr, 0); }
