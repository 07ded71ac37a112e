#include "ZBLIDOM/ZBLIDOM_Exception.h"

#include <string>

#include "ZBLCore/ZBLExceptionMembers.h"
#include "ZBLCore/ZBLMessage.h"

namespace {

I18NString sentence(const I18NString& text, const I18NString& path, long line, long column) {
    I18NString result = path;
    if (!path.empty()) result += ":";
    if (line > 0) result.appendUtf8(std::to_string(line) + ':' + std::to_string(column) + ':');
    if (!result.empty()) result += " ";
    return result += text;
}

} // namespace

ZBLIDOM_Exception::ZBLIDOM_Exception(const I18NString& text, const I18NString& path, long line, long column)
    : ZBLException(ZBLSeverity::error, -1L), m_path(std::make_shared<const I18NString>(path)), m_line(line),
      m_column(column) {
    ZBLException::operator<<(ZBLMessageString(sentence(text, path, line, column)));
}

ZBLIDOM_Exception::ZBLIDOM_Exception(const ZBLIDOM_Exception&) noexcept = default;

ZBLIDOM_Exception::~ZBLIDOM_Exception() = default;

ZBLIDOM_Exception& ZBLIDOM_Exception::operator=(const ZBLIDOM_Exception&) noexcept = default;

ZBL_DEFINE_EXCEPTION_MEMBERS(ZBLIDOM_Exception)
