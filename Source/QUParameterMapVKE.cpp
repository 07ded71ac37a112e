// The parameter map of the configuration file: finds and reads the file, and answers from the maps that were taken out
// of it or from the document itself.
#include "AQU_ParameterMapVKE.h"

#include <optional>

#include "Mortise/AUT_Text.h"
#include "PlatformOs.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "AQE_LogFile.h"

#include "QEMessageNumbers.h"
#include "QUParameterMap.h"

using namespace parameter_result;

namespace {

constexpr char kConfigurationDirectory[] = "../configuration/";

// Names and the fixed texts of the file; each is made once, so that a lookup makes no string for it.
struct FileTexts {
    const I18NString section{"section"};
    const I18NString map{"map"};
    const I18NString entry{"entry"};
    const I18NString name{"name"};
    const I18NString value{"value"};
    const I18NString priority{"priority"};
    const I18NString parameterMaps{"ParameterMaps"};
};

const FileTexts& Texts() {
    static const FileTexts& texts = *new FileTexts();
    return texts;
}

void LogFault(int textId) { AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_NotFound, textId); }

// The system reads a path up to its first zero byte, which would be another file.
bool Exists(const I18NString& path) {
    return path.bytes().find('\0') == std::string_view::npos && _access(path.c_str(), 0) == 0;
}

} // namespace

I18NString AQU_ParameterMapVKE::FindFile(const I18NString& fileName) {
    I18NString plain = fileName;
    ZBLConfigurationFactory::getInstance().completeFileName(plain);
    I18NString preferred = plain;
    const I18NString::index position = plain.rfind(fileName);
    if (position >= 0) preferred.insert(position, kConfigurationDirectory);
    if (Exists(preferred)) return preferred;
    return Exists(plain) ? plain : I18NString();
}

AQU_ParameterMapVKE::AQU_ParameterMapVKE(const I18NString& name, int configured, int initialPriority, bool readInMemory)
    : AQU_I_ParameterMap(initialPriority), inMemory(readInMemory), fileName(name), configuredPriority(configured) {
    OpenVKEFile();
    if (inMemory) LoadParameterMap2Memory();
}

AQU_ParameterMapVKE::~AQU_ParameterMapVKE() = default;

bool AQU_ParameterMapVKE::OpenVKEFile() {
    const I18NString path = FindFile(fileName);
    if (!path.empty()) {
        document =
            ZBLIDOM_DOMImplementation::getInstance().createDocument("", "VKEConfigFileXML", ZBLIDOM_DocumentType());
        ZBLIDOM_Parser(0).parse(path, document);
    }
    fileOpen = !document.getDocumentElement().isNull();
    if (!fileOpen) LogFault(kQELogConfigurationFileMissing);
    return fileOpen;
}

bool AQU_ParameterMapVKE::findFirstChildElementWithAttributes(ZBLIDOM_Element& result, const ZBLIDOM_Element& parent,
                                                              const I18NString& tag,
                                                              const std::vector<I18NString>& attributeNames,
                                                              const std::vector<I18NString>& attributeValues) {
    const ZBLIDOM_NodeList candidates = parent.getElementsByTagName(tag);
    for (long i = 0; i < candidates.getLength(); ++i) {
        const ZBLIDOM_Element candidate(candidates.item(i));
        bool agrees = true;
        for (std::size_t a = 0; agrees && a < attributeNames.size(); ++a)
            agrees = candidate.getAttribute(attributeNames[a]) == attributeValues[a];
        if (!agrees) continue;
        result = candidate;
        return true;
    }
    return false;
}

void AQU_ParameterMapVKE::LoadParameterMap2Memory() {
    if (!fileOpen) return;
    const FileTexts& texts = Texts();
    ZBLIDOM_Element section;
    if (!findFirstChildElementWithAttributes(section, document.getDocumentElement(), texts.section, {texts.name},
                                             {texts.parameterMaps}))
        return LogFault(kQELogNoParameterMapsSection);
    const ZBLIDOM_NodeList maps = section.getElementsByTagName(texts.map);
    for (long i = 0; i < maps.getLength(); ++i) {
        const ZBLIDOM_Element map(maps.item(i));
        if (AUT_ToInt(map.getAttribute(texts.priority)) != GetPriority()) continue;
        std::map<I18NString, I18NString> entriesOfMap;
        const ZBLIDOM_NodeList entries = map.getElementsByTagName(texts.entry);
        for (long j = 0; j < entries.getLength(); ++j) {
            const ZBLIDOM_Element entry(entries.item(j));
            entriesOfMap[entry.getAttribute(texts.name)] = entry.getAttribute(texts.value);
        }
        memoryMaps[map.getAttribute(texts.name)] = std::move(entriesOfMap);
    }
    inMemory = true;
}

int AQU_ParameterMapVKE::Get(const I18NString& key, I18NString& value) {
    return Get(AQU_EnvironmentMapName(), key, value);
}

int AQU_ParameterMapVKE::Get(const I18NString& map, const I18NString& key, I18NString& value) {
    if (!fileOpen) return kNoConfigurationFile;
    return inMemory ? GetFromMemory(map, key, value) : GetFromDocument(map, key, value);
}

int AQU_ParameterMapVKE::GetFromMemory(const I18NString& map, const I18NString& key, I18NString& value) const {
    const auto entries = memoryMaps.find(map);
    if (entries == memoryMaps.end()) return kMapNotServed;
    const auto entry = entries->second.find(key);
    if (entry == entries->second.end()) return kNoSuchKey;
    value = entry->second;
    return kFound;
}

int AQU_ParameterMapVKE::GetFromDocument(const I18NString& map, const I18NString& key, I18NString& value) const {
    const FileTexts& texts = Texts();
    ZBLIDOM_Element found;
    if (!findFirstChildElementWithAttributes(found, document.getDocumentElement(), texts.section, {texts.name},
                                             {texts.parameterMaps}))
        return kNoSuchKey;
    if (!findFirstChildElementWithAttributes(found, found, texts.map, {texts.name, texts.priority},
                                             {map, AUT_ToString(GetPriority())}))
        return kMapNotServed;
    if (!findFirstChildElementWithAttributes(found, found, texts.entry, {texts.name}, {key})) return kNoSuchKey;
    value = found.getAttribute(texts.value);
    return kFound;
}

void AQU_ParameterMapVKE::GetMapNames(std::vector<I18NString>& names) {
    for (const auto& [name, entries] : memoryMaps)
        names.push_back(name);
}

int AQU_ParameterMapVKE::GetAllEntries(const I18NString& map, std::vector<std::pair<I18NString, I18NString>>& out) {
    const auto entries = memoryMaps.find(map);
    if (entries == memoryMaps.end()) return kMapNotServed;
    out.insert(out.end(), entries->second.begin(), entries->second.end());
    return kFound;
}

int AQU_ParameterMapVKE::GetDefault(const I18NString&, I18NString&) { return kNoSuchKey; }
