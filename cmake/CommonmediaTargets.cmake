# What every target of this project has in common: the language, the warnings, the sanitizers.

function(commonmedia_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(
        ${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                          $<$<BOOL:${COMMONMEDIA_WERROR}>:-Werror>
                          # The same bytes whatever directory the sources stand in.
                          $<$<NOT:$<CONFIG:Debug>>:-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=>)
    if(COMMONMEDIA_SANITIZE)
        # Without recovery, so that the first report ends the test it stands in.
        target_compile_options(
            ${target} PRIVATE -fsanitize=${COMMONMEDIA_SANITIZE} -fno-sanitize-recover=all
                              -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${COMMONMEDIA_SANITIZE})
    endif()
endfunction()

# With COMMONMEDIA_UNITY some sources of the target, in the order of their names, are one translation unit, which the
# compiler and clang-tidy read in a tenth of the time. Two sources of one unit cannot define a file-local name twice.
function(commonmedia_unity target)
    if(COMMONMEDIA_UNITY)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
    endif()
endfunction()
