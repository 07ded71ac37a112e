// The loader of the security library, and the one object that the process shares.
#include "AQU_CryptoRuntime.h"

#include "ZBLCore/ZBLFmDir.h"
#include "ZBLCore/ZBLThread.h"

namespace {

constexpr const char* kLibrary = "KSM_Crypto_Interface";
constexpr DWORD kSearchItsOwnDirectory = 8;

constinit ZBLThreadCriticalSection section;
// Both are guarded by the section. A plain pointer: nothing is deleted when the process ends.
constinit ZBLCrypto* crypto = nullptr;
constinit bool initialised = false;

} // namespace

ZBLCrypto::ZBLCrypto(const I18NString& name) {
    const I18NString path = ZBLFmDir::resolveEffectivePath(name + ".dll");
    m_module = LoadLibraryExA(path.c_str(), nullptr, kSearchItsOwnDirectory);
    if (m_module != nullptr && !FetchEntryPoints()) unload();
}

ZBLCrypto::~ZBLCrypto() = default;

// A pointer must not outlive the module that it leads into.
void ZBLCrypto::unload() {
    ClearEntryPoints();
    if (m_module != nullptr) FreeLibrary(m_module);
    m_module = nullptr;
}

// Stops at the first one that is missing.
bool ZBLCrypto::FetchEntryPoints() {
#define FETCH(name)                                                                                                    \
    m_##name = GetProcAddress(m_module, #name);                                                                        \
    if (m_##name == nullptr) return false;
    BRINDLE_CRYPTO_ENTRY_POINTS(FETCH)
#undef FETCH
    return true;
}

void ZBLCrypto::ClearEntryPoints() {
#define CLEAR(name) m_##name = nullptr;
    BRINDLE_CRYPTO_ENTRY_POINTS(CLEAR)
#undef CLEAR
}

void AQU_CryptoRuntime::initialize() {
    const ZBLThreadGuard guard(section);
    if (!initialised) internalInit();
}

void AQU_CryptoRuntime::terminate() {
    const ZBLThreadGuard guard(section);
    if (!initialised) return;
    initialised = false;
    delete crypto;
    crypto = nullptr;
}

ZBLCrypto* AQU_CryptoRuntime::getCrypto() {
    const ZBLThreadGuard guard(section);
    if (!initialised) internalInit();
    return crypto;
}

void AQU_CryptoRuntime::internalInit() {
    try {
        crypto = new ZBLCrypto(kLibrary);
    } catch (...) {
        crypto = nullptr;
    }
    initialised = true;
}
