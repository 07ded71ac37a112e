// Starts the library, expands a text, has a failure thrown inside the library and catches it outside, ends the library.
#include <iostream>
#include <memory>
#include <string>

#include "ZBLCore/I18NString.h"

#include "ABrindle.h"
#include "AQM_I_MacroExpander.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"
#include "QEException.h"

namespace {

std::string Expanded(const char* text, AQU_I_ParameterAccessCoordinator* parameters) {
    try {
        return std::string(AQM_I_MacroExpander().Expand(text, parameters).bytes());
    } catch (const QEExceptionExtended& failure) {
        return "refused at " + std::to_string(failure.GetPosition());
    }
}

} // namespace

int main() {
    if (ABrindle_Initialize("consumer") != 0) return 1;
    std::string lines;
    {
        AQU_ParameterMapApp parameters("_env", 0);
        parameters.Set("x", "1");
        const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
        coordinator->AddParameterMap(&parameters);
        coordinator->AddParameterAccessCoordinator(AQE_I_GetQueryEnginePAC());
        lines = Expanded("a #$x# b", coordinator.get()) + ", " + Expanded("#$#", coordinator.get());
    }
    ABrindle_Terminate("consumer");
    std::cout << lines << '\n';
    return lines == "a 1 b, refused at 4" ? 0 : 1;
}
