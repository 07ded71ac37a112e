// A place in the source code, as a throw site names it.
#pragma once

// Borrows the path, which is a literal at the throw site; a null path is the empty one. Lines count from 1.
class ZBLFileLocation {
public:
    ZBLFileLocation(const char* path, long line) noexcept : m_path(path != nullptr ? path : ""), m_line(line) {}

    const char* getPath() const noexcept { return m_path; }
    long getLine() const noexcept { return m_line; }

private:
    const char* m_path;
    long m_line;
};
