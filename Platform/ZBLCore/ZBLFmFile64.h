// One open file of any size, read and written at a position that moves along.
#pragma once

#include <cstdint>
#include <memory>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

namespace brindle_platform {
class FileDescriptor;
}

// Nothing is buffered: what Write has taken is with the system, and Read sees what others have written. The file isn't
// inherited by programs that the process starts. No operation throws but for memory. One thread at a time.
class BRINDLE_PLATFORM_API ZBLFmFile64 {
public:
    ZBLFmFile64() noexcept;
    // Closes the file.
    ~ZBLFmFile64();
    ZBLFmFile64(const ZBLFmFile64&) = delete;
    ZBLFmFile64& operator=(const ZBLFmFile64&) = delete;

    // Opens the file and stands at its start. Kind 2 starts a new file, made or emptied. Kind 3 keeps what there is; a
    // missing file is made, but for readOnly. With readOnly the file can't be written, without it it is open for
    // reading and writing. The name is a path, where it isn't absolute from the working directory. Only regular files
    // are opened: no directory, pipe or device. 0 is failure, as is any other kind; then no file is open. A file that
    // was open before is closed in any case.
    int Open(const I18NString& name, int kind, bool readOnly);

    // The number of bytes read; fewer than `count` only at the end of the file or on an error. 0 without an open file
    // and for a count below 0.
    long Read(void* bytes, long count);

    // The number of bytes written, fewer than `count` only on an error such as a full disk; those written stay. 0
    // without an open file, for a file opened with readOnly and for a count below 0.
    long Write(const void* bytes, long count);

    // Moves the position by the offset `high` * 2^32 + `low`, with `low` taken without a sign, from the start (origin
    // 0), the position (1) or the end (2): one byte back is Seek(-1, -1, 1). The position may lie beyond the end; one
    // before the start is refused. 0 is failure, which leaves the position.
    int Seek(std::int32_t low, std::int32_t high, int origin);

    // 0 if no file was open, or the system told only now that not all was written. The file is closed in any case.
    int Close();

private:
    std::unique_ptr<brindle_platform::FileDescriptor> m_file;
    bool m_readOnly = false;
};
