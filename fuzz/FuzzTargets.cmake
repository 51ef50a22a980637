# The fuzz targets: each fuzz_<name>.cpp defines LLVMFuzzerTestOneInput, with seeds in corpus/<name>/
# and a dictionary in dict/<name>.dict.
set(QUILLARY_FUZZ_TARGETS tax_evaluator infix postfix translate_text)

# Replays every target without the fuzzing engine (any compiler): the seeds plus `count` inputs from a
# fixed-seed generator, registered with CTest as fuzz_replay_<name>.
function(quillary_fuzz_replays count)
    set(_dir "${CMAKE_CURRENT_FUNCTION_LIST_DIR}")
    foreach(_t IN LISTS QUILLARY_FUZZ_TARGETS)
        add_executable(replay_${_t} "${_dir}/fuzz_${_t}.cpp" "${_dir}/ReplayMain.cpp" "${_dir}/FuzzInput.h" "${_dir}/FuzzEval.h")
        target_link_libraries(replay_${_t} PRIVATE quillary_engine)
        add_test(NAME fuzz_replay_${_t}
                 COMMAND replay_${_t} "${_dir}/corpus/${_t}" "${_dir}/dict/${_t}.dict" ${count})
        set_tests_properties(fuzz_replay_${_t} PROPERTIES TIMEOUT 120
            ENVIRONMENT "LANG=en_NZ.UTF-8;LC_ALL=en_NZ.UTF-8;TZ=Pacific/Auckland")
    endforeach()
endfunction()
