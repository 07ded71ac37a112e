// 64 MiB of comma-separated records, read into one row that is used again for each record, and written. The peer is
// libcsv: it calls back for each field and each record, and what it gives is kept in a row of std::string in the same
// way. It reads blocks of 64 KiB by fread. It writes field by field, by its own function for files or into a buffer
// that goes to fwrite record by record; it quotes every field.
//
// A record has twelve fields of an order: numbers, dates, names, some of them quoted, some not ASCII.
#include "ServicesBenchmarks.h"

#include <cstdint>
#include <cstdio>
#include <csv.h>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "AQU_csvFile_v2.h"

#include "Inputs.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_benchmark {
namespace {

constexpr std::size_t kFileBytes = 64 << 20;

// What a row's content comes to, the same whoever has read it.
class Digest {
public:
    void Field(std::string_view bytes) {
        m_value = m_value * 31 + bytes.size() + (bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front()));
    }
    void Record() { m_value = m_value * 31 + 7; }
    std::uint64_t Value() const { return m_value; }

private:
    std::uint64_t m_value = 0;
};

using Rows = std::vector<std::vector<I18NString>>;

Rows MakeRows() {
    std::mt19937 random(20240229);
    const auto number = [&random](unsigned below) { return std::to_string(random() % below); };
    const char* const cities[] = {"Porto", "S\xC3\xA3o Paulo", "Oslo", "Washington, D.C.", "Lyon", "Wien", "Sydney"};
    const char* const notes[] = {"", "", "paid", "says \"call first\"", "leave at the door, please", "open"};
    Rows rows;
    for (std::size_t bytes = 0; bytes < kFileBytes;) {
        std::vector<std::string> fields = {number(1000000000),
                                           "2024-0" + std::to_string(1 + random() % 9) + "-1" + number(10),
                                           "Customer " + number(5000),
                                           "street " + number(90) + " no. " + number(300),
                                           cities[random() % std::size(cities)],
                                           number(99999),
                                           "product " + number(20000),
                                           number(100),
                                           number(10000) + "." + number(100),
                                           "EUR",
                                           notes[random() % std::size(notes)],
                                           random() % 2 == 0 ? "shipped" : "in preparation"};
        std::vector<I18NString> row;
        for (const std::string& field : fields) {
            row.push_back(ToText(field));
            bytes += field.size() + 1;
        }
        ++bytes;
        rows.push_back(std::move(row));
    }
    return rows;
}

std::uint64_t ReadWithBrindle(const std::string& file) {
    Digest digest;
    AQU_csvFile_v2 csv(ToText(file), "r");
    for (std::vector<I18NString> row; csv.Get(row); row.clear()) {
        for (const I18NString& field : row)
            digest.Field(field.bytes());
        digest.Record();
    }
    return digest.Value();
}

struct PeerRow {
    std::vector<std::string> fields;
    std::size_t count = 0;
    Digest digest;

    void Add(const char* bytes, std::size_t size) {
        if (count == fields.size()) fields.emplace_back();
        fields[count++].assign(bytes, size);
    }
    void End() {
        for (std::size_t field = 0; field < count; ++field)
            digest.Field(fields[field]);
        digest.Record();
        count = 0;
    }
};

std::uint64_t ReadWithLibcsv(const std::string& file) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "rb"), std::fclose);
    csv_parser parser;
    if (opened == nullptr || csv_init(&parser, 0) != 0) throw std::runtime_error("libcsv does not start");
    PeerRow row;
    const auto field = [](void* bytes, std::size_t size, void* data) {
        static_cast<PeerRow*>(data)->Add(static_cast<const char*>(bytes), size);
    };
    const auto record = [](int, void* data) { static_cast<PeerRow*>(data)->End(); };
    std::vector<char> block(64 << 10);
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), opened.get()))
        if (csv_parse(&parser, block.data(), count, field, record, &row) != count)
            throw std::runtime_error("libcsv stops");
    csv_fini(&parser, field, record, &row);
    csv_free(&parser);
    return row.digest.Value();
}

void WriteWithBrindle(const std::string& file, const Rows& rows) {
    AQU_csvFile_v2 csv(ToText(file), "w");
    for (const std::vector<I18NString>& row : rows)
        csv.Put(row);
}

void WriteWithLibcsv(const std::string& file, const Rows& rows) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "wb"), std::fclose);
    if (opened == nullptr) throw std::runtime_error("no file for libcsv");
    for (const std::vector<I18NString>& row : rows) {
        for (const I18NString& field : row) {
            if (&field != row.data()) std::fputc(',', opened.get());
            csv_fwrite(opened.get(), field.bytes().data(), field.bytes().size());
        }
        std::fputs("\r\n", opened.get());
    }
}

void WriteWithLibcsvBuffer(const std::string& file, const Rows& rows) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "wb"), std::fclose);
    if (opened == nullptr) throw std::runtime_error("no file for libcsv");
    std::vector<char> line;
    for (const std::vector<I18NString>& row : rows) {
        std::size_t size = 0;
        for (const I18NString& field : row) {
            const std::string_view bytes = field.bytes();
            if (line.size() < size + 2 * bytes.size() + 5) line.resize(2 * (size + 2 * bytes.size() + 5));
            if (size > 0) line[size++] = ',';
            size += csv_write(line.data() + size, line.size() - size, bytes.data(), bytes.size());
        }
        line[size++] = '\r';
        line[size++] = '\n';
        std::fwrite(line.data(), 1, size, opened.get());
    }
}

void Register(const char* run, const std::function<void()>& work) {
    benchmark::RegisterBenchmark(run, [work](benchmark::State& state) {
        for (auto _ : state)
            work();
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kFileBytes));
    });
}

} // namespace

void RegisterCsvRuns() {
    const auto directory = std::make_shared<const brindle_test::TemporaryDirectory>();
    const auto rows = std::make_shared<Rows>(MakeRows());
    const std::string input = directory->Path() + "/input.csv";
    const std::string output = directory->Path() + "/output.csv";

    WriteWithBrindle(input, *rows);
    const std::uint64_t expected = ReadWithBrindle(input);
    Digest digest;
    for (const std::vector<I18NString>& row : *rows) {
        for (const I18NString& field : row)
            digest.Field(field.bytes());
        digest.Record();
    }
    const auto require = [expected](const char* run, std::uint64_t seen) {
        RequireSame(run, std::to_string(seen), std::to_string(expected));
    };
    require("csv/rows", digest.Value());
    require("csv/read libcsv", ReadWithLibcsv(input));
    for (const auto write : {WriteWithLibcsv, WriteWithLibcsvBuffer}) {
        write(output, *rows);
        require("csv/write libcsv", ReadWithBrindle(output));
    }

    Register("csv/read brindle", [directory, input] { benchmark::DoNotOptimize(ReadWithBrindle(input)); });
    Register("csv/read libcsv", [input] { benchmark::DoNotOptimize(ReadWithLibcsv(input)); });
    Register("csv/write brindle", [output, rows] { WriteWithBrindle(output, *rows); });
    Register("csv/write libcsv", [output, rows] { WriteWithLibcsv(output, *rows); });
    Register("csv/write libcsv buffer", [output, rows] { WriteWithLibcsvBuffer(output, *rows); });
}

} // namespace brindle_benchmark
