# Every target of ours calls vantrel_harden(target): one place for warnings and sanitizers.
function(vantrel_harden target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                             -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor)
    if(VANTREL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VANTREL_SANITIZE)
        # float-cast-overflow is not part of GCC's "undefined" group, and it is the check that
        # guards every double-to-integer step of the timecode arithmetic.
        set(_san -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                 -fno-omit-frame-pointer)
        # -O1 as the sanitizers advise, and line tables only: the reports name file and line,
        # and the test command compiles everything a second time for this build.
        target_compile_options(${target} PRIVATE ${_san} -O1 -g1)
        target_link_options(${target} PRIVATE ${_san})
    else()
        # The hardening Debian builds its packages with; fortified calls need optimisation, and
        # AddressSanitizer does their checks better, so they stay out of sanitizer builds.
        target_compile_options(${target} PRIVATE -fstack-protector-strong -fstack-clash-protection
                               $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
        target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
    endif()
endfunction()
