#include "Support/FailingFiles.h"

#include <cerrno>
#include <cstdio>

#include <dlfcn.h>
#include <fcntl.h>

std::atomic<long> brindle_test::fileCallsLeft = -1;

// Under names of our own, as the system's headers may define some of these inline.
#define BRINDLE_FAILING(result, failure, name, parameters, arguments)                                                  \
    extern "C" __attribute__((visibility("default"))) result failing_##name parameters __asm__(#name);                 \
    result failing_##name parameters {                                                                                 \
        static const auto next = reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #name));                      \
        using brindle_test::fileCallsLeft;                                                                             \
        if (fileCallsLeft < 0 || fileCallsLeft-- != 0) return next arguments;                                          \
        errno = EIO;                                                                                                   \
        return failure;                                                                                                \
    }

BRINDLE_FAILING(int, -1, open, (const char* path, int flags, mode_t mode), (path, flags, mode))
BRINDLE_FAILING(ssize_t, -1, read, (int file, void* bytes, std::size_t count), (file, bytes, count))
BRINDLE_FAILING(ssize_t, -1, write, (int file, const void* bytes, std::size_t count), (file, bytes, count))
BRINDLE_FAILING(int, next(file) - 1, close, (int file), (file))
BRINDLE_FAILING(FILE*, nullptr, fopen, (const char* path, const char* mode), (path, mode))
BRINDLE_FAILING(std::size_t, 0, fwrite, (const void* bytes, std::size_t size, std::size_t count, FILE* file),
                (bytes, size, count, file))
BRINDLE_FAILING(int, EOF, fflush, (FILE * file), (file))
BRINDLE_FAILING(int, next(file) - 1, fclose, (FILE * file), (file))
