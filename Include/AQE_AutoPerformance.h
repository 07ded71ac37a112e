// The guard that a provider puts on the stack around a call that is to be measured:
//
//     const AQE_AutoPerformance measured(data, query, component, function);
//
// Guards nest: what a nested guard measures is taken off the one around it. They must end in the reverse order of their
// start, as scopes do by themselves. A guard and the data that it books to belong to one thread. Start and end take no
// lock and allocate nothing.
#pragma once

#include <cstdint>

#include "BrindleApi.h"

class AQE_PerfData;
class AQU_ResourcePool;

class BRINDLE_API AQE_AutoPerformance {
public:
    // Null data measures nothing, and so does a guard that is nested more than 50 deep. Numbers that are not registered
    // with the run are logged, and the guard measures nothing either.
    AQE_AutoPerformance(AQE_PerfData* data, int query, int component, int function) : m_data(data) {
        if (m_data != nullptr) StartInstrumentation(query, component, function);
    }
    // Books to the data that the pool holds; measures nothing if pool or data are missing.
    AQE_AutoPerformance(AQU_ResourcePool* pool, int query, int component, int function) : m_data(nullptr) {
        if (pool != nullptr) StartWithPool(pool, query, component, function);
    }
    AQE_AutoPerformance(const AQE_AutoPerformance&) = delete;
    AQE_AutoPerformance& operator=(const AQE_AutoPerformance&) = delete;
    virtual ~AQE_AutoPerformance() {
        if (m_data != nullptr) StopInstrumentation();
    }

private:
    friend class AQE_PerfData;

    void StartWithPool(AQU_ResourcePool* pool, int query, int component, int function);
    void StartInstrumentation(int query, int component, int function);
    void StopInstrumentation();
    void Refuse(int query, int component, int function);

    AQE_PerfData* m_data; // null once it is gone
    int m_query;
    int m_component;
    int m_function;
    std::int64_t m_startTime;
};
