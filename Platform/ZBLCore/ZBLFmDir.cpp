#include "ZBLCore/ZBLFmDir.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "OS/FileSystem.h"
#include "OS/ProgramDirectory.h"

using namespace brindle_platform;

bool ZBLFmDir::readDir(const I18NString& path, std::vector<I18NString>& names) {
    const std::optional<std::vector<std::string>> found = regularFileNames(path.bytes());
    if (!found) return false;
    std::vector<I18NString> valid;
    for (const std::string& name : *found) {
        I18NString text{std::string_view(name)};
        if (text.bytes() == name) valid.push_back(std::move(text));
    }
    std::sort(valid.begin(), valid.end());
    names.insert(names.end(), std::make_move_iterator(valid.begin()), std::make_move_iterator(valid.end()));
    return true;
}

I18NString ZBLFmDir::resolveEffectivePath(const I18NString& name) {
    if (name.bytes().starts_with('/')) return name;
    std::string path = programDirectory();
    if (!path.ends_with('/')) path += '/';
    return I18NString(std::string_view(path.append(name.bytes())));
}
