// Services that were ever put in place stand in a list that only grows; an atomic pointer names the one in force.
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "ZBLCFGAPI/ConfigurationService.h"

namespace {

// Null for the built-in service.
std::atomic<IZBLConfiguration*> serviceInForce{nullptr};

IZBLConfiguration& builtIn() {
    static IZBLConfiguration& service = *new brindle_platform::ConfigurationService();
    return service;
}

void keep(std::shared_ptr<IZBLConfiguration> service) {
    static std::mutex& mutex = *new std::mutex();
    static auto& kept = *new std::vector<std::shared_ptr<IZBLConfiguration>>();
    const std::lock_guard<std::mutex> lock(mutex);
    kept.push_back(std::move(service));
}

} // namespace

IZBLConfiguration& ZBLConfigurationFactory::getInstance() {
    IZBLConfiguration* service = serviceInForce.load(std::memory_order_acquire);
    return service == nullptr ? builtIn() : *service;
}

void ZBLConfigurationFactory::setInstance(std::shared_ptr<IZBLConfiguration> service) {
    IZBLConfiguration* const next = service.get();
    if (next != nullptr) keep(std::move(service));
    serviceInForce.store(next, std::memory_order_release);
}
