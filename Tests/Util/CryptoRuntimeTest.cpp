#include "AQU_CryptoRuntime.h"

#include <memory>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "Support/Directory.h"

namespace {

// A program directory of its own, into which a test puts the stand-in for the security library.
struct CryptoRuntime : testing::Test, brindle_test::Directory {
    CryptoRuntime() { brindle_platform::setProgramDirectory(Path("")); }
    ~CryptoRuntime() override { AQU_CryptoRuntime::terminate(); }

    // The names of entry points stand between zero bytes; one under another name can't be found.
    void Install(const std::string& name, const std::string& missing) {
        std::string module = Bytes(BRINDLE_CRYPTO_STAND_IN);
        const std::string entry = '\0' + missing + '\0';
        for (std::size_t at = 0; (at = module.find(entry, at)) != module.npos; ++at)
            module[at + 1] = '?';
        Write(name + ".so", module);
    }

    bool IsInProcess(const std::string& name) {
        void* const module = dlopen(Path(name + ".so").c_str(), RTLD_NOW | RTLD_NOLOAD);
        return module != nullptr && dlclose(module) == 0;
    }

    // Whether each operation answers to 7 with its entry point's place in the list, or that there is no entry point.
    static bool AllAnswer(ZBLCrypto& crypto, bool isThere) {
        int place = 0, right = 0;
#define CALL(name) right += crypto.name(7) == (++place, isThere ? place * 100 + 7 : -1);
        BRINDLE_CRYPTO_ENTRY_POINTS(CALL)
        return place == 38 && right == 38;
    }
};

TEST_F(CryptoRuntime, EachOperationGoesToItsOwnEntryPointIfAllAreThere) {
#define NAME(name) #name,
    for (const std::string name : {BRINDLE_CRYPTO_ENTRY_POINTS(NAME) "absent", "whole"}) {
        const bool isWhole = name == "whole";
        if (name != "absent") Install(name, name);
        EXPECT_TRUE(AllAnswer(*std::make_unique<ZBLCrypto>(name.c_str()), isWhole)) << name;
        ZBLCrypto crypto(name.c_str());
        EXPECT_TRUE(crypto.isLoaded() == isWhole && IsInProcess(name) == isWhole) << name;
        crypto.unload(), crypto.unload();
        EXPECT_TRUE(!crypto.isLoaded() && AllAnswer(crypto, false));
        EXPECT_EQ(IsInProcess(name), isWhole) << "the first object has left it there";
    }
}

TEST_F(CryptoRuntime, ThereIsOneAttemptUntilTerminate) {
    AQU_CryptoRuntime::terminate(), AQU_CryptoRuntime::initialize();
    ZBLCrypto* const absent = AQU_CryptoRuntime::getCrypto();
    Install("KSM_Crypto_Interface", "none");
    AQU_CryptoRuntime::initialize();
    EXPECT_TRUE(AQU_CryptoRuntime::getCrypto() == absent && AllAnswer(*absent, false));
    AQU_CryptoRuntime::terminate();
    ZBLCrypto* const present = AQU_CryptoRuntime::getCrypto();
    EXPECT_TRUE(AQU_CryptoRuntime::getCrypto() == present && present->AS_DecryptText(1) == 3801);
}

} // namespace
