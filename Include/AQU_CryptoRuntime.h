// The process's one door to the security library, which is loaded by name when it is first asked for. No cryptography
// stands here: every operation goes on to the entry point of its name.
#pragma once

#include "PlatformOs.h"
#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// All entry points, in the order in which they are fetched.
#define BRINDLE_CRYPTO_ENTRY_POINTS(ENTRY)                                                                             \
    ENTRY(KSM_CryptoInitialize)                                                                                        \
    ENTRY(KSM_CryptoTerminate)                                                                                         \
    ENTRY(KSM_CryptoFree)                                                                                              \
    ENTRY(KSM_CryptoGetLastErrorDetails)                                                                               \
    ENTRY(KSM_Socket)                                                                                                  \
    ENTRY(KSM_Bind)                                                                                                    \
    ENTRY(KSM_Bind_Url)                                                                                                \
    ENTRY(KSM_Listen)                                                                                                  \
    ENTRY(KSM_Accept)                                                                                                  \
    ENTRY(KSM_Connect)                                                                                                 \
    ENTRY(KSM_Connect_Url)                                                                                             \
    ENTRY(KSM_EstablishSecure)                                                                                         \
    ENTRY(KSM_GetSockName)                                                                                             \
    ENTRY(KSM_GetPeerName)                                                                                             \
    ENTRY(KSM_GetSockOpt)                                                                                              \
    ENTRY(KSM_SetSockOpt)                                                                                              \
    ENTRY(KSM_Send)                                                                                                    \
    ENTRY(KSM_Recv)                                                                                                    \
    ENTRY(KSM_SocketSecurityOp)                                                                                        \
    ENTRY(KSM_Select)                                                                                                  \
    ENTRY(KSM_Poll)                                                                                                    \
    ENTRY(KSM_CloseHandle)                                                                                             \
    ENTRY(KSM_PersistentInitialize)                                                                                    \
    ENTRY(KSM_SetInfo)                                                                                                 \
    ENTRY(KSM_ProtectData)                                                                                             \
    ENTRY(KSM_UnprotectData)                                                                                           \
    ENTRY(KSM_GetInfo)                                                                                                 \
    ENTRY(KSM_ImpUsrInitialize)                                                                                        \
    ENTRY(KSM_ImpUsrNegotiate)                                                                                         \
    ENTRY(KSM_ImpUsrImpersonate)                                                                                       \
    ENTRY(KSM_ImpUsrRevert)                                                                                            \
    ENTRY(KSM_ImpUsrSerializeHandle)                                                                                   \
    ENTRY(KSM_ImpUsrDeserializeHandle)                                                                                 \
    ENTRY(KSM_GetRandomData)                                                                                           \
    ENTRY(KSM_EncryptCredential)                                                                                       \
    ENTRY(KSM_DecryptCredential)                                                                                       \
    ENTRY(KSM_CMDRT_DecryptPassport)                                                                                   \
    ENTRY(AS_DecryptText)

// The security library as an object with one operation for each entry point. An operation takes the arguments of its
// entry point, in exactly their types, and answers its result; it answers -1 if no library is loaded. The operations
// take no lock.
class BRINDLE_API ZBLCrypto {
public:
    // Loads the library of this name, without extension; a relative one counts from the program directory. If it can't
    // be found or lacks an entry point, nothing is loaded, and nothing is reported.
    explicit ZBLCrypto(const I18NString& name);
    ZBLCrypto(const ZBLCrypto&) = delete;
    ZBLCrypto& operator=(const ZBLCrypto&) = delete;
    // The library stays in the process.
    virtual ~ZBLCrypto();

    bool isLoaded() const { return m_module != nullptr; }

    // Takes the library out of the process, unless someone else has loaded it too. Nobody may be in an operation.
    void unload();

#define BRINDLE_CRYPTO_OPERATION(name)                                                                                 \
    template <class... Arguments>                                                                                      \
    long name(Arguments... arguments) {                                                                                \
        return Call(m_##name, arguments...);                                                                           \
    }
    BRINDLE_CRYPTO_ENTRY_POINTS(BRINDLE_CRYPTO_OPERATION)
#undef BRINDLE_CRYPTO_OPERATION

private:
    template <class... Arguments>
    static long Call(FARPROC entryPoint, Arguments... arguments) {
        if (entryPoint == nullptr) return -1;
        // By way of the type that stands for any function, so that compilers take the cast for meant.
        const auto any = reinterpret_cast<void (*)()>(entryPoint);
        return reinterpret_cast<int (*)(Arguments...)>(any)(arguments...);
    }

    bool FetchEntryPoints();
    void ClearEntryPoints();

    HMODULE m_module = nullptr;
#define BRINDLE_CRYPTO_POINTER(name) FARPROC m_##name = nullptr;
    BRINDLE_CRYPTO_ENTRY_POINTS(BRINDLE_CRYPTO_POINTER)
#undef BRINDLE_CRYPTO_POINTER
};

// All operations may be called on any thread; each holds the runtime's lock for its whole run.
class BRINDLE_API AQU_CryptoRuntime {
public:
    // Makes the object if that has not been tried since the process began or since terminate.
    static void initialize();

    // Deletes the object; the next use makes a new one.
    static void terminate();

    // The runtime keeps the object, which lives until terminate. Null only if it could not be made at all: without the
    // library there is an object whose operations answer -1.
    static ZBLCrypto* getCrypto();

private:
    static void internalInit();
};
