// Delimited text files, read and written record by record. The extension chooses the dialect: ".csv", in upper or lower
// case, is a comma-separated file in the platform's default encoding; any other file is tab-separated Unicode text with
// a byte-order mark.
//
//     AQU_csvFile_v2 file("data.csv", "r");
//     for (std::vector<I18NString> fields; file.Get(fields); fields.clear()) ...
//
// A line is taken to end in CR LF: where it ends in a bare LF, the character in front of that is lost. A field with a
// separator or a double quote in it is quoted, its double quotes doubled. Line breaks inside a field are written as
// they stand and read as the end of the record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLFmFile64.h"

#include "BrindleApi.h"

// Failures are QEException with code -1 and the file name as parameter of the message: 903316479 where the file can't
// be opened, 903119692 where it can't be written. A file is used for one direction at a time: Put overwrites what Get
// has read ahead. One thread at a time.
class BRINDLE_API AQU_csvFile_v2 {
public:
    // The name is a path; one that isn't absolute counts from the working directory. The mode is exactly one of "r",
    // "r+", "a", "a+", "w", "w+"; with any other, and with an empty name, the file can't be opened. "w" and "w+" start
    // a new file, the others keep what there is; all but "r" make a missing file. "a" and "a+" stand at the end. A tab
    // file that may be written gets the mark of UTF-16 when it is new, and also when it has fewer than four bytes,
    // behind these.
    AQU_csvFile_v2(const I18NString& fileName, const char* mode);
    ~AQU_csvFile_v2();
    AQU_csvFile_v2(const AQU_csvFile_v2&) = delete;
    AQU_csvFile_v2& operator=(const AQU_csvFile_v2&) = delete;

    // Appends the fields of the next record, at least one. False at the end of the file, and nothing is appended; what
    // can't be read counts as the end, also within a record. A line beyond 2 GiB throws std::length_error.
    bool Get(std::vector<I18NString>& fields);

    // Writes one record with a line end, in one piece. In UTF-16 the line has two bytes for each character, so that one
    // with characters beyond 16 bits is cut short.
    void Put(const std::vector<I18NString>& fields);

    // Whether nothing more can be read. After true the position has moved back by one byte, so that the last byte can
    // be read again.
    bool Eof();

private:
    void GetFileEncoding(const I18NString& fileName);
    void CreateCSVLine(const std::vector<I18NString>& fields);
    void SplitCSVLine(std::string_view line, std::vector<I18NString>& fields) const;

    bool IsLineEnd(std::size_t offset);
    void TakeLine(std::size_t lineFeed, std::vector<I18NString>& fields);
    void TakeRest(std::vector<I18NString>& fields);
    std::size_t AppendQuoted(std::string_view field, std::size_t size);
    void Reserve(std::size_t byteCount);
    [[noreturn]] void Fail(long messageNumber, long line) const;

    std::unique_ptr<ZBLFmFile64> m_file;
    std::string m_mode;
    std::string m_encoding;
    char m_separator = ',';
    I18NString m_fileName;
    std::unique_ptr<char[]> m_buffer;
    std::int32_t m_capacity = 0;
    std::int32_t m_used = 0; // bytes at the buffer's front: read and not handed out, or the line just written
    std::size_t m_unit = 1;  // bytes of a code unit, as the encoding has them
    bool m_isUtf8 = false;
};
