# Settings that every target of the project shares: language level, warnings, hardening, sanitizers, visibility.

# brindle_settings(TARGET): applies them to one target.
function(brindle_settings target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow -fstack-protector-strong)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # g++ 12 sees overlapping copies in its own std::string operator+ when it optimises.
        target_compile_options(${target} PRIVATE -Wno-restrict)
        # And unset members in its own std::regex under the sanitizers.
        if(BRINDLE_SANITIZE)
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    endif()
    if(BRINDLE_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(BRINDLE_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${BRINDLE_SANITIZE} -fno-omit-frame-pointer
                               -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${BRINDLE_SANITIZE})
    elseif(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$")
        target_compile_options(${target} PRIVATE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    endif()
    if(NOT BRINDLE_SANITIZE)
        # Nobody replaces single functions of the libraries, and -z now binds all of them at the start anyway: calls go
        # straight to them, within a library and into others, and may be inlined.
        target_compile_options(${target} PRIVATE -fno-semantic-interposition -fno-plt)
        target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now -Wl,--as-needed -Wl,-Bsymbolic-functions)
    endif()
endfunction()
