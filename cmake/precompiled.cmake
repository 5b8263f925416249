# Headers that most files of a target include are compiled once; small targets share those of the
# floor they stand on. The preset `plain` builds without them.
target_precompile_headers(guanchao_core PRIVATE cmake/precompiled/core.h)
target_precompile_headers(guanchao_windows PRIVATE cmake/precompiled/windows.h)

function(share_precompiled floor)
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM ${floor})
    endforeach()
endfunction()

share_precompiled(guanchao_core
    guanchao_desktop collector_core
    practice_folder_files prepare_stores practice_market_server practice_market
    market_scale_stores market_scale history_builder_files history_builder
    practice_history_days practice_history live_check)
share_precompiled(guanchao_windows guanchao_program guanchaotai collector_window caijiqi)

if(GUANCHAO_TESTS)
    target_precompile_headers(logic_tests PRIVATE cmake/precompiled/logic_tests.h)
    target_precompile_headers(window_tests PRIVATE cmake/precompiled/window_tests.h)
    share_precompiled(guanchao_core guanchao_test_support store_query)
endif()
if(GUANCHAO_BENCH)
    share_precompiled(guanchao_windows startup_probe guanchao_bench)
endif()
