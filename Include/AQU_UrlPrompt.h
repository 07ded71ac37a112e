// A URL with prompts: which there are, and the URL with values in their places. A prompt is written "??name??". Nothing
// is checked and there are no defaults. An object belongs to one thread at a time.
//
// The URL is read from the left. Of three "?" the first is plain text and the last two open the prompt. An opening "??"
// that nothing closes is plain text; but four "?" whose last two nothing closes are a prompt without a name.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class BRINDLE_API AQU_UrlPrompt {
public:
    explicit AQU_UrlPrompt(const I18NString& url);

    // `out` becomes the names in the order in which they stand in the URL, each as often as it stands there.
    void GetPrompts(std::vector<I18NString>& out);

    // Puts the value, URL-encoded, in all places of the prompt. Does nothing for a name that isn't among the prompts.
    // The places are sought in the text, so of more than four "?" the first four are the prompt without a name.
    void ReplacePromptsWithValue(const I18NString& name, const I18NString& value);

    // The URL with what has been replaced so far. If nothing is left of it, the URL as it was given.
    I18NString GetNewUrl();

private:
    void Analyze(const I18NString& text);

    std::vector<I18NString> prompts;
    I18NString url;
    I18NString newUrl;
};
