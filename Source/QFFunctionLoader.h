// Loads the catalogue: file lists name the other files, definition files hold the tree of groups and entries, string
// files the texts of a locale. The operations that load the pool (AQF_FunctionPool::GetInstance, LoadLocale) stand in
// the .cpp, and with them the guard and the one pointer to the pool.
//
// Files are read in one order: the main file list, the further ones by name, the definition files as listed, then
// locale by locale its string files as listed. Where two say something of one thing, the first one counts. A file that
// doesn't exist is passed over; one that can't be read, or isn't well-formed, ends the load with the reader's
// exception.
#pragma once

#include <optional>

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "QFFunctionLoaderEntries.h"
#include "QFFunctionLoaderLog.h"
#include "QFFunctionLoaderNames.h"
#include "QFFunctionPool.h"

// From now on files are sought in a tree of sources. Any thread.
void AQF_UseDevelopmentFiles();

// Deletes the pool, if there is one; the next use loads another. Any thread, but nobody may be using the pool.
void AQF_DeletePool();

// One load of an empty pool; belongs to the thread that loads. After an exception the pool is fit to be deleted and for
// nothing else.
class AQF_FunctionLoader {
public:
    explicit AQF_FunctionLoader(AQF_FunctionPool& pool);

    void Load();

private:
    void LoadFileLists();
    // An empty path stands for the main file list.
    void LoadFileList(const I18NString& path);
    void ReadDescription(const ZBLIDOM_Element& description);
    void LoadDefinitions();
    void LoadDefinitionFile(const I18NString& fullPath);
    void AddEntryNames();
    void LoadAllLocales();
    void LoadLocale(const I18NLocale& locale);
    void LoadStringFile(const I18NLocale& locale, const I18NString& fullPath);
    void ReadStrings(ZBLIDOM_View section, const I18NLocale& locale, AQF_StringTable& table);

    // False if there is no such file.
    bool ReadDocument(const I18NString& fullPath);

    AQF_FunctionPool& m_pool;
    AQF_LoaderLog m_log;
    AQF_EntryReader m_entries;
    // From the moment when all entries are there.
    std::optional<AQF_NameCollector> m_names;
    // Takes one file after the other, in the same memory.
    ZBLIDOM_Document m_document;
};
