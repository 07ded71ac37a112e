// What the catalogue's loading writes to the log. Nothing that it finds in a file ends the load.
#pragma once

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

#include "AQE_LogFile.h"

#include "QFFunctionPool.h"

// One load's log; belongs to the thread that loads. An operation costs next to nothing if its level isn't wanted: a
// catalogue may hold many thousands of texts that are each worth a record.
class AQF_LoaderLog {
public:
    // The pool's description files tell which locales have texts.
    void NoTextsForLocale(const I18NLocale& locale, const AQF_FunctionPool& pool);
    void MalformedRule(int ordinal, const I18NString& file, const I18NString& entryId);

    // A second text for a key of a locale.
    void TextIsGivenAgain(const I18NLocale& locale, const I18NString& id, const I18NString& text,
                          const I18NString& kept);

    // Why an entry can't have the name (in lower case); `other` has it already, with `otherText` in the locale.
    void KindHasNoName(const AQF_FunctionDescription& entry, const I18NString& name);
    void KindsDiffer(const AQF_FunctionDescription& entry, const I18NString& name, const AQF_FunctionDescription& other,
                     const I18NString& otherText);
    void BothHaveLibraries(const AQF_FunctionDescription& entry, const I18NString& name);
    void CanonicalsDiffer(const AQF_FunctionDescription& entry, const I18NString& name,
                          const AQF_FunctionDescription& other, const I18NString& otherText);

private:
    static AQE_LogFile MakeFunctionLog();

    AQE_LogFile m_log{"QE"};
    AQE_LogFile m_functionLog = MakeFunctionLog();
};
