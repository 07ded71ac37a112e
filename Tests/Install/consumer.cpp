// Starts the library, expands a text, has a failure thrown inside the library and catches it outside, ends the library.
#include <memory>

#include "ZBLCore/I18NString.h"

#include "ABrindle.h"
#include "AQM_I_MacroExpander.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"
#include "QEException.h"

int main() {
    if (ABrindle_Initialize("consumer") != 0) return 1;
    bool isExpanded = false, isRefused = false;
    {
        AQU_ParameterMapApp parameters("_env", 0);
        parameters.Set("x", "1");
        const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
        coordinator->AddParameterMap(&parameters);
        coordinator->AddParameterAccessCoordinator(AQE_I_GetQueryEnginePAC()); // VKEConfig.xml takes part in lookups
        isExpanded = AQM_I_MacroExpander().Expand("a #$x# b", coordinator.get()) == "a 1 b";
        try {
            AQM_I_MacroExpander().Expand("#$#", coordinator.get());
        } catch (const QEExceptionExtended& failure) {
            isRefused = failure.GetPosition() == 4;
        }
    }
    ABrindle_Terminate("consumer");
    return isExpanded && isRefused ? 0 : 1;
}
