#include "Mortise/AUT_Resource.h"

#include <cstdint>
#include <utility>

#include "Mortise/AUT_Text.h"
#include "ZBLCore/ZBLMessageCatalogue.h"

bool AUT_ResourceLoadString(const I18NString& resourceFile, I18NString& outFile, int id, I18NString& text) {
    // The numbers of messages are unsigned, and those of the upper half arrive here as negative ones.
    const std::uint32_t number = static_cast<std::uint32_t>(id);
    I18NString found;
    I18NString path;
    const bool answer = ZBLMessageCatalogue::findText(resourceFile, number, AUT_DefaultLocale(), found, &path);
    if (!answer) found = ZBLMessageCatalogue::fallbackText(resourceFile, number);
    // Set last, so that the name may be one of the two results.
    outFile = std::move(path);
    text = std::move(found);
    return answer;
}
