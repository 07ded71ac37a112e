#include "CatalogueFiles.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string_view>

namespace brindle_benchmark {
namespace {

constexpr int kFolders = 60; // in three levels
constexpr int kVendors = 8;

// Words from which a locale makes its texts: an action, a thing, a purpose.
struct Words {
    const char* locale;
    std::array<const char*, 4> actions, things, purposes;
};

constexpr std::array<Words, 10> kWords = {{
    {"de",
     {"Summe", "Größe", "Prüfung", "Länge"},
     {"Beträge", "Aufträge", "Zeiträume", "Konten"},
     {"je Monat", "je Gebiet", "für Käufer", "insgesamt"}},
    {"en-us",
     {"Sum", "Size", "Check", "Length"},
     {"Amounts", "Orders", "Periods", "Accounts"},
     {"per Month", "per Region", "for Buyers", "in Total"}},
    {"es",
     {"Suma", "Tamaño", "Control", "Longitud"},
     {"Importes", "Pedidos", "Períodos", "Cuentas"},
     {"por Mes", "por Región", "para Compradores", "en Total"}},
    {"fr",
     {"Somme", "Taille", "Contrôle", "Longueur"},
     {"Montants", "Commandes", "Périodes", "Comptes"},
     {"par Mois", "par Région", "pour Acheteurs", "au Total"}},
    {"it",
     {"Somma", "Dimensione", "Controllo", "Lunghezza"},
     {"Importi", "Ordini", "Periodi", "Conti"},
     {"per Mese", "per Regione", "per Acquirenti", "in Totale"}},
    {"ja",
     {"合計", "大きさ", "検査", "長さ"},
     {"金額", "注文", "期間", "口座"},
     {"月別", "地域別", "購入者別", "全体"}},
    {"nl",
     {"Som", "Grootte", "Controle", "Lengte"},
     {"Bedragen", "Orders", "Perioden", "Rekeningen"},
     {"per Maand", "per Regio", "voor Kopers", "in Totaal"}},
    {"pl",
     {"Suma", "Wielkość", "Kontrola", "Długość"},
     {"Kwoty", "Zamówienia", "Okresy", "Konta"},
     {"na Miesiąc", "na Region", "dla Kupujących", "Razem"}},
    {"pt-br",
     {"Soma", "Tamanho", "Verificação", "Comprimento"},
     {"Valores", "Pedidos", "Períodos", "Contas"},
     {"por Mês", "por Região", "para Compradores", "no Total"}},
    {"ru",
     {"Сумма", "Размер", "Проверка", "Длина"},
     {"Платежи", "Заказы", "Периоды", "Счета"},
     {"по Месяцам", "по Регионам", "для Покупателей", "Всего"}},
}};

constexpr std::array<const char*, 6> kTypes = {"numeric", "string", "date", "dateTime", "interval", "measure"};
constexpr std::array<const char*, 4> kFormats = {"numberFormat", "currencyFormat", "dateFormat", "stringFormat"};
constexpr std::array<const char*, 4> kLevels = {"ok", "limited", "restricted", "unavailable"};
constexpr std::array<const char*, 8> kInterfaces = {"OR", "D2", "SS", "TD", "OL", "XO", "BW", "all_rel"};

class Writer {
public:
    void Open(std::string_view tag) { Line("<" + std::string(tag) + ">"), ++m_depth; }
    void Close(std::string_view tag) { --m_depth, Line("</" + std::string(tag) + ">"); }
    void Leaf(std::string_view tag, std::string_view text) {
        Line("<" + std::string(tag) + ">" + std::string(text) + "</" + std::string(tag) + ">");
    }
    void Line(const std::string& line) {
        m_text.append(static_cast<std::size_t>(m_depth), '\t');
        (m_text += line) += '\n';
    }
    std::string Take() { return std::move(m_text); }

private:
    std::string m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    int m_depth = 0;
};

std::string Number(int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return digits;
}

std::string EntryId(int entry) { return "bench.folder" + Number(entry % kFolders) + ".entry" + Number(entry); }

// One entry in ten has the text of the entry before it: another vendor's function of the same name.
int TextOf(int entry) { return entry % 10 == 9 ? entry - 1 : entry; }

const char* KindOf(int entry) {
    switch (TextOf(entry) % 25) {
    case 3:
        return "summary";
    case 7:
        return "operator";
    default:
        return "function";
    }
}

template <class Choices>
const char* Pick(const Choices& choices, int number) {
    return choices[static_cast<std::size_t>(number) % choices.size()];
}

void WriteParameters(Writer& out, int entry) {
    for (int parameter = 0; parameter < 1 + entry % 3; ++parameter) {
        out.Open("parameter");
        out.Leaf("type", Pick(kTypes, entry + parameter));
        if (parameter > 0) {
            out.Leaf("type", Pick(kTypes, entry + parameter + 2));
            out.Leaf("optional", "true");
        }
        out.Close("parameter");
    }
}

void WriteRules(Writer& out, int entry) {
    out.Open("qosLevel");
    for (int rule = 0; rule < 2; ++rule) {
        out.Open("rule");
        out.Leaf("interface", Pick(kInterfaces, entry + rule));
        out.Leaf("value", Pick(kLevels, entry + rule));
        out.Close("rule");
    }
    out.Open("rule");
    out.Line("<default/>");
    out.Leaf("value", "ok");
    out.Close("rule");
    out.Close("qosLevel");
}

void WriteEntry(Writer& out, int entry) {
    const std::string number = Number(TextOf(entry));
    out.Open(KindOf(entry));
    out.Leaf("id", EntryId(entry));
    out.Leaf("returnType", Pick(kTypes, entry));
    out.Leaf("formatType", Pick(kFormats, entry));
    WriteParameters(out, entry);
    out.Leaf("canonical", "canonical_of_" + number + "(^1, ^2)");
    out.Leaf("canonicalExpression",
             "case when [1] &lt; [2] then canonical_of_" + number + " ( [1], [2] ) else null end");
    if (entry % 10 == 9) out.Leaf("vendor", "VENDOR" + Number(entry % kVendors));
    if (entry % 3 == 0) out.Leaf("context", "tabular");
    out.Leaf("interface", Pick(kInterfaces, entry));
    if (entry % 2 == 0) WriteRules(out, entry);
    out.Leaf("example", "canonical_of_" + number + " ( [Sales].[Orders].[Amount], 100 ) > 4711");
    out.Leaf("result", "The first value as far as it isn't larger than the second one, else nothing at all.");
    out.Leaf("remark", "Rounds to the smaller of both types; a filter takes it only behind the summary.");
    out.Close(KindOf(entry));
}

// Three levels: folders 0 to 3, in each of them every fourth folder from there on up to 19, in those the rest.
void WriteFolder(Writer& out, int folder, int firstEntry, int endEntry) {
    out.Open("group");
    out.Leaf("id", "bench.folder" + Number(folder));
    for (int entry = firstEntry; entry < endEntry; ++entry)
        if (entry % kFolders == folder) WriteEntry(out, entry);
    const int width = folder < 4 ? 4 : 16;
    const int end = folder < 4 ? 20 : kFolders;
    for (int inner = folder + width; folder < 20 && inner < end; inner += width)
        WriteFolder(out, inner, firstEntry, endEntry);
    out.Close("group");
}

std::string MakeDefinitions(int firstEntry, int endEntry) {
    Writer out;
    out.Open("functionsRoot");
    for (int folder = 0; folder < 4; ++folder)
        WriteFolder(out, folder, firstEntry, endEntry);
    out.Close("functionsRoot");
    return out.Take();
}

// The texts stand folder after folder, as their authors write them: neither by id nor in the order of the definitions.
std::string MakeTexts(const Words& words, int entries) {
    Writer out;
    out.Open("stringTable");
    out.Open("component");
    for (int folder = 0; folder < kFolders; ++folder) {
        out.Line("<section type=\"FOLDER" + Number(folder) + "\">");
        for (int entry = folder; entry < entries; entry += kFolders) {
            const int text = TextOf(entry);
            out.Line("\t<string id=\"" + EntryId(entry) + "\" type=\"String\">" + Pick(words.actions, text) + " " +
                     Pick(words.things, text / 4) + " " + Pick(words.purposes, text / 16) + " " + Number(text) +
                     "</string>");
        }
        out.Line("</section>");
    }
    out.Close("component");
    out.Close("stringTable");
    return out.Take();
}

} // namespace

const std::vector<std::string>& GeneratedCatalogue::Locales() {
    static const std::vector<std::string> locales = [] {
        std::vector<std::string> names;
        for (const Words& words : kWords)
            names.emplace_back(words.locale);
        return names;
    }();
    return locales;
}

GeneratedCatalogue::GeneratedCatalogue(const CatalogueSize& size) {
    std::filesystem::create_directories(ProgramDirectory());
    std::filesystem::create_directories(m_root.Path() + "/configuration/functions");

    Writer list;
    list.Open("fileList");
    for (int file = 0; file < size.definitionFiles; ++file)
        list.Leaf("definition", "functions" + Number(file) + ".xml");
    for (const Words& words : kWords) {
        list.Open("description");
        list.Leaf("language", words.locale);
        list.Leaf("file", std::string("texts_") + words.locale + ".xml");
        list.Close("description");
    }
    list.Close("fileList");
    Write("FileList.xml", list.Take());
    for (int file = 0; file < size.definitionFiles; ++file)
        Write("functions" + Number(file) + ".xml", MakeDefinitions(file * size.entries / size.definitionFiles,
                                                                   (file + 1) * size.entries / size.definitionFiles));
    for (const Words& words : kWords)
        Write(std::string("texts_") + words.locale + ".xml", MakeTexts(words, size.entries));
}

void GeneratedCatalogue::Write(const std::string& name, const std::string& content) {
    m_files.push_back(m_root.Path() + "/configuration/functions/" + name);
    std::ofstream file(m_files.back(), std::ios::binary);
    if (!(file << content).flush()) throw std::runtime_error("cannot write " + m_files.back());
}

} // namespace brindle_benchmark
