// Directories, and names completed to paths. Any thread.
#pragma once

#include <vector>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

struct BRINDLE_PLATFORM_API ZBLFmDir {
    // Appends the bare names of the regular files in the directory, links to such files among them, in order. Names
    // that aren't valid UTF-8 are left out. False if the directory can't be read, and then nothing is appended.
    static bool readDir(const I18NString& path, std::vector<I18NString>& names);

    // An absolute name as it is; any other behind the program directory and "/". The answer is never a bare name, so
    // whoever opens it doesn't search the working directory.
    static I18NString resolveEffectivePath(const I18NString& name);
};
