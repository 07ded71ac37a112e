#include "Mortise/AUT_I_FileSupport.h"

#include "OS/FileSystem.h"

bool AUT_I_FileSupport::DirectoryExists(const I18NString& path) {
    return brindle_platform::directoryExists(path.bytes());
}

bool AUT_I_FileSupport::MakeDirectory(const I18NString& path) { return brindle_platform::makeDirectory(path.bytes()); }
