// The process's one pool with its guard, and the load that fills it: which files are read, and in which order.
#include "QFFunctionLoader.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "Mortise/AUT_Text.h"
#include "PlatformOs.h"
#include "ZBLCFGAPI/IZBLConfiguration.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"
#include "ZBLCore/ZBLFmDir.h"
#include "ZBLCore/ZBLThread.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

namespace {

constexpr const char* kMainFileList = "FileList.xml";

// Held while a pool is loaded or deleted. The pointer is set when the pool is complete, so reading it takes no guard.
constinit ZBLThreadCriticalSection AQF_PoolGuard{1};
std::atomic<AQF_FunctionPool*> thePool{nullptr};

std::atomic<bool> useDevelopmentFiles{false};

I18NString BaseDirectory() { return useDevelopmentFiles ? "../../src/vke/Utility/FDS" : "../configuration/functions"; }

I18NString PathOf(const I18NString& file) { return BaseDirectory() + "/" + file; }

I18NString StringFilePathOf(const I18NString& file) { return PathOf(useDevelopmentFiles ? "res/" + file : file); }

I18NString FullPathOf(const I18NString& path) { return ZBLConfigurationFactory::getInstance().getFullPath(path); }

// The system reads a path up to its first zero byte, which would be another file.
bool Exists(const I18NString& path) {
    return path.bytes().find('\0') == std::string_view::npos && _access(path.c_str(), 0) == 0;
}

// The main file list has nothing between the two ends, so it is no further one.
bool IsFurtherFileList(const I18NString& fileName) {
    const I18NString begin("filelist");
    const I18NString end(".xml");
    const I18NString::index size = fileName.size();
    return size > begin.size() + end.size() &&
           AUT_CaseInsensitiveCompare(fileName.substring(0, begin.size()), begin) == 0 &&
           AUT_CaseInsensitiveCompare(fileName.substring(size - end.size()), end) == 0;
}

// Enters the locale among those that are loaded, and answers its string files. None for a locale that was loaded
// before; it is logged if it has none.
const std::vector<I18NString>* EnterLocale(AQF_FunctionPool& pool, AQF_LoaderLog& log, const I18NLocale& locale) {
    if (std::find(pool.loadedLocales.begin(), pool.loadedLocales.end(), locale) != pool.loadedLocales.end())
        return nullptr;
    pool.loadedLocales.push_back(locale);
    const auto found = pool.descriptionFiles.find(locale.getName());
    if (found != pool.descriptionFiles.end()) return &found->second;
    log.NoTextsForLocale(locale, pool);
    return nullptr;
}

} // namespace

AQF_FunctionPool* AQF_FunctionPool::GetInstance() {
    if (AQF_FunctionPool* const pool = thePool.load(std::memory_order_acquire)) return pool;
    const ZBLThreadGuard guard(AQF_PoolGuard);
    if (AQF_FunctionPool* const pool = thePool.load(std::memory_order_relaxed)) return pool;
    auto pool = std::make_unique<AQF_FunctionPool>();
    AQF_FunctionLoader(*pool).Load();
    // The load writes to the log, and what takes the record may have come here on this thread and loaded a pool.
    if (AQF_FunctionPool* const other = thePool.load(std::memory_order_relaxed)) return other;
    thePool.store(pool.get(), std::memory_order_release);
    return pool.release();
}

// Every locale that has string files was loaded with the pool, so one that comes here for the first time has none.
void AQF_FunctionPool::LoadLocale(const I18NLocale& locale) {
    const ZBLThreadGuard guard(AQF_PoolGuard);
    AQF_LoaderLog log;
    EnterLocale(*this, log, locale);
}

void AQF_UseDevelopmentFiles() { useDevelopmentFiles = true; }

void AQF_DeletePool() {
    const ZBLThreadGuard guard(AQF_PoolGuard);
    delete thePool.exchange(nullptr);
}

AQF_FunctionLoader::AQF_FunctionLoader(AQF_FunctionPool& pool)
    : m_pool(pool), m_entries(pool, m_log),
      m_document(ZBLIDOM_DOMImplementation::getInstance().createDocument(I18NString(), "TT", ZBLIDOM_DocumentType())) {}

void AQF_FunctionLoader::Load() {
    LoadFileLists();
    LoadDefinitions();
    LoadAllLocales();
    m_names->Finish();
}

void AQF_FunctionLoader::LoadFileLists() {
    std::vector<I18NString> names;
    ZBLFmDir::readDir(FullPathOf(BaseDirectory()), names);
    std::set<I18NString> further;
    std::copy_if(names.begin(), names.end(), std::inserter(further, further.end()), IsFurtherFileList);
    LoadFileList(PathOf(kMainFileList));
    for (const I18NString& name : further)
        LoadFileList(PathOf(name));
}

void AQF_FunctionLoader::LoadFileList(const I18NString& path) {
    if (!ReadDocument(FullPathOf(path.empty() ? PathOf(kMainFileList) : path))) return;
    const ZBLIDOM_NodeList definitions = m_document.getElementsByTagName("definition");
    for (long i = 0; i < definitions.getLength(); ++i) {
        I18NString file = ZBLIDOM_Helper::getElementText(definitions.item(i));
        if (!file.empty()) m_pool.definitionFiles.push_back(std::move(file));
    }
    const ZBLIDOM_NodeList descriptions = m_document.getElementsByTagName("description");
    for (long i = 0; i < descriptions.getLength(); ++i)
        ReadDescription(ZBLIDOM_Element(descriptions.item(i)));
}

void AQF_FunctionLoader::ReadDescription(const ZBLIDOM_Element& description) {
    const I18NString language = ZBLIDOM_Helper::getElementText(description.getElementsByTagName("language").item(0));
    std::vector<I18NString>& files =
        m_pool.descriptionFiles[ZBLConfigurationFactory::getInstance().normalizeLocale(language)];
    const ZBLIDOM_NodeList elements = description.getElementsByTagName("file");
    for (long i = 0; i < elements.getLength(); ++i) {
        I18NString file = ZBLIDOM_Helper::getElementText(elements.item(i));
        if (!file.empty()) files.push_back(std::move(file));
    }
}

void AQF_FunctionLoader::LoadDefinitions() {
    m_pool.root = std::make_unique<AQF_FunctionDescription>(&m_pool, FT_group, "/");
    for (const I18NString& file : m_pool.definitionFiles)
        LoadDefinitionFile(FullPathOf(PathOf(file)));
    m_entries.Finish();
    m_names.emplace(m_pool, m_log);
    AddEntryNames();
}

void AQF_FunctionLoader::LoadDefinitionFile(const I18NString& fullPath) {
    if (!ReadDocument(fullPath)) return;
    // There may be more of them, far apart in a large tree; only the first one counts.
    for (ZBLIDOM_View node(m_document); node; node = node.getNextInOrder())
        if (node.getTagName() == "functionsRoot") return m_entries.ReadRoot(node);
}

// The names that stand in the definitions come before all texts of string files.
void AQF_FunctionLoader::AddEntryNames() {
    for (const auto& [language, files] : m_pool.descriptionFiles) {
        const I18NLocale locale(language);
        AQF_StringTable& table = m_pool.stringTables[language];
        table.Reserve(m_pool.entriesById.size());
        for (const auto& [id, entry] : m_pool.entriesById)
            if (!entry->name.empty()) m_names->AddEntryString(entry->name, id.bytes(), locale, table);
    }
}

void AQF_FunctionLoader::LoadAllLocales() {
    for (const auto& [language, files] : m_pool.descriptionFiles)
        LoadLocale(language);
}

void AQF_FunctionLoader::LoadLocale(const I18NLocale& locale) {
    const std::vector<I18NString>* const files = EnterLocale(m_pool, m_log, locale);
    if (!files) return;
    for (const I18NString& file : *files)
        LoadStringFile(locale, FullPathOf(StringFilePathOf(file)));
}

void AQF_FunctionLoader::LoadStringFile(const I18NLocale& locale, const I18NString& fullPath) {
    if (!ReadDocument(fullPath)) return;
    AQF_StringTable& table = m_pool.stringTables[locale.getName()];
    const ZBLIDOM_NodeList components = m_document.getElementsByTagName("component");
    for (long i = 0; i < components.getLength(); ++i) {
        const ZBLIDOM_NodeList sections = ZBLIDOM_Element(components.item(i)).getElementsByTagName("section");
        for (long k = 0; k < sections.getLength(); ++k)
            ReadStrings(ZBLIDOM_View(sections.item(k)), locale, table);
    }
}

void AQF_FunctionLoader::ReadStrings(ZBLIDOM_View section, const I18NLocale& locale, AQF_StringTable& table) {
    for (ZBLIDOM_View child = section.getFirstElement(); child; child = child.getNextElement())
        if (child.getTagName() == "string")
            m_names->AddEntryString(child.getElementText(), child.getAttribute("id"), locale, table);
}

bool AQF_FunctionLoader::ReadDocument(const I18NString& fullPath) {
    if (!Exists(fullPath)) return false;
    ZBLIDOM_Parser(0).parse(fullPath, m_document);
    m_pool.currentFile = fullPath;
    return true;
}
