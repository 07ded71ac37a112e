// A run's data as an item of a resource pool.
#include "AQE_ResourcePerformance.h"

#include <typeinfo>

#include "AQE_PerfData.h"

AQE_ResourcePerformance::AQE_ResourcePerformance() : m_data(std::make_unique<AQE_PerfData>()) {}

AQE_ResourcePerformance::~AQE_ResourcePerformance() = default;

AQE_PerfData* AQE_ResourcePerformance::Create(AQU_ResourcePool* pool) {
    if (pool == nullptr) return new AQE_PerfData();
    auto* const item = new AQE_ResourcePerformance();
    std::unique_ptr<AQU_ResourceItem> owner(item);
    pool->AddResourceItem(kResourceType, item);
    owner.release();
    return item->getValue();
}

AQE_PerfData* AQE_ResourcePerformance::Get(AQU_ResourcePool* pool) {
    if (pool == nullptr) return nullptr;
    AQU_ResourceItem* const item = pool->GetResourceItem(kResourceType, 0);
    // Anyone may add items of this resource type. The class is final, and each guard asks: comparing is cheaper than a
    // cast that searches.
    if (item == nullptr || typeid(*item) != typeid(AQE_ResourcePerformance)) return nullptr;
    return static_cast<AQE_ResourcePerformance*>(item)->m_data.get();
}

void AQE_ResourcePerformance::SetReportContext(AQU_ResourcePool* pool, const I18NString& reportContext,
                                               const I18NString& sessionID, const I18NString& requestID) {
    if (AQE_PerfData* const data = Get(pool)) data->SetReportContext(reportContext, sessionID, requestID);
}

void AQE_ResourcePerformance::AddProviderMessage(AQU_ResourcePool* pool, int query, int component,
                                                 AUT_I_LogFile::ELogLevel level, const I18NString& text) {
    if (AQE_PerfData* const data = Get(pool)) data->AddProviderMessage(query, component, level, text);
}

bool AQE_ResourcePerformance::IsBeingInstrumented(AQU_ResourcePool* pool) {
    const AQE_PerfData* const data = Get(pool);
    return data != nullptr && data->IsBeingInstrumented();
}

AQE_PerfData* AQE_ResourcePerformance::getValue() { return m_data.get(); }
