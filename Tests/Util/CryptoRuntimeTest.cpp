#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQU_CryptoRuntime.h"

namespace {

// A program directory of its own, into which a test puts the stand-in for the security library.
class CryptoRuntime : public testing::Test {
protected:
    CryptoRuntime() {
        if (mkdtemp(m_root.data()) == nullptr) std::abort();
        brindle_platform::setProgramDirectory(m_root.c_str());
    }
    ~CryptoRuntime() override {
        AQU_CryptoRuntime::terminate();
        brindle_platform::setProgramDirectory("");
        std::filesystem::remove_all(m_root);
    }

    // The names of entry points stand between zero bytes; one under another name can't be found.
    void Install(const std::string& name, const std::string& missing = "none") {
        std::ifstream stream(BRINDLE_CRYPTO_STAND_IN, std::ios::binary);
        std::string module(std::istreambuf_iterator<char>(stream), {});
        const std::string entry = '\0' + missing + '\0';
        for (std::size_t at = 0; (at = module.find(entry, at)) != module.npos; ++at)
            module[at + 1] = '?';
        std::ofstream(m_root + "/" + name + ".so", std::ios::binary) << module;
    }

    bool IsInProcess(const std::string& name) {
        void* const module = dlopen((m_root + "/" + name + ".so").c_str(), RTLD_NOW | RTLD_NOLOAD);
        return module != nullptr && dlclose(module) == 0;
    }

    // What all operations answer to 7, in the order of the list.
    static std::vector<long> CallAll(ZBLCrypto& crypto) {
#define CALL(name) crypto.name(7),
        return {BRINDLE_CRYPTO_ENTRY_POINTS(CALL)};
    }

    std::string m_root = testing::TempDir() + "brindle-XXXXXX";
    const std::vector<long> m_nothing = std::vector<long>(38, -1);
};

TEST_F(CryptoRuntime, EachOperationGoesToItsOwnEntryPoint) {
    Install("whole");
    std::vector<long> expected;
    for (long place = 1; place <= 38; ++place)
        expected.push_back(place * 100 + 7);
    EXPECT_EQ(CallAll(*std::make_unique<ZBLCrypto>("whole")), expected);
    ZBLCrypto crypto("whole");
    EXPECT_TRUE(crypto.isLoaded());
    for (int i = 0; i < 2; ++i) {
        crypto.unload();
        EXPECT_EQ(CallAll(crypto), m_nothing);
        EXPECT_TRUE(!crypto.isLoaded() && IsInProcess("whole")) << "for the object that went has left it there";
    }
}

TEST_F(CryptoRuntime, ALibraryThatLacksAnEntryPointIsNotLoaded) {
#define NAME(name) #name,
    for (const std::string name : {BRINDLE_CRYPTO_ENTRY_POINTS(NAME) "absent"}) {
        if (name != "absent") Install(name, name);
        ZBLCrypto crypto(name.c_str());
        EXPECT_FALSE(crypto.isLoaded() || IsInProcess(name)) << name;
        EXPECT_EQ(CallAll(crypto), m_nothing);
    }
}

TEST_F(CryptoRuntime, ThereIsOneAttemptUntilTerminate) {
    AQU_CryptoRuntime::terminate(), AQU_CryptoRuntime::initialize();
    ZBLCrypto* const absent = AQU_CryptoRuntime::getCrypto();
    Install("KSM_Crypto_Interface");
    AQU_CryptoRuntime::initialize();
    EXPECT_EQ(AQU_CryptoRuntime::getCrypto(), absent);
    EXPECT_EQ(CallAll(*absent), m_nothing);
    AQU_CryptoRuntime::terminate();
    ZBLCrypto* const present = AQU_CryptoRuntime::getCrypto();
    EXPECT_EQ(present->AS_DecryptText(1), 3801);
    EXPECT_EQ(AQU_CryptoRuntime::getCrypto(), present);
}

} // namespace
