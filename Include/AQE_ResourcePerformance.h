// The data of a report run as an item of the request's resource pool, so that whoever has the pool can measure. The run
// ends, and its record is written, when the pool deletes the item.
#pragma once

#include <memory>

#include "Mortise/AUT_I_LogFile.h"
#include "ZBLCore/I18NString.h"

#include "AQU_ResourcePool.h"
#include "BrindleApi.h"

class AQE_PerfData;

// A null pool, and a pool without such an item, mean that nothing is being measured, and are no failure. One thread at
// a time, like the pool and the data.
class BRINDLE_API AQE_ResourcePerformance final : public AQU_ResourceItem {
public:
    // The resource type in the pool; the item counts if it is the first of its type.
    static constexpr long kResourceType = 8;

    // The data of a new item that the pool owns. With a null pool the data alone, which is the caller's to delete.
    static AQE_PerfData* Create(AQU_ResourcePool* pool);

    // Null if there is none. The pool keeps the data.
    static AQE_PerfData* Get(AQU_ResourcePool* pool);

    // Those of the pool's data.
    static void SetReportContext(AQU_ResourcePool* pool, const I18NString& reportContext, const I18NString& sessionID,
                                 const I18NString& requestID);
    static void AddProviderMessage(AQU_ResourcePool* pool, int query, int component, AUT_I_LogFile::ELogLevel level,
                                   const I18NString& text);
    static bool IsBeingInstrumented(AQU_ResourcePool* pool);

    using AQU_ResourceItem::getValue; // the constant one answers null
    virtual AQE_PerfData* getValue();

private:
    AQE_ResourcePerformance();
    ~AQE_ResourcePerformance() override;

    std::unique_ptr<AQE_PerfData> m_data;
};
