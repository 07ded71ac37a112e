// Directories of the file system. A path with U+0000 in it names nothing.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

struct BRINDLE_PLATFORM_API AUT_I_FileSupport {
    static bool DirectoryExists(const I18NString& path);

    // Makes missing parents too, with mode 0777 under the umask; true if the directory stands afterwards.
    static bool MakeDirectory(const I18NString& path);
};
