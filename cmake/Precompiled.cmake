# Headers of other libraries that are parsed once for many targets, which halves the time of a build.
# None of our own is among them: a change of one would build everything again.
set(NORVANE_STANDARD_HEADERS <algorithm> <atomic> <chrono> <cmath> <condition_variable> <cstring>
    <functional> <map> <memory> <mutex> <optional> <set> <string> <string_view> <thread>
    <unordered_map> <utility> <vector>)
set(NORVANE_DESKTOP_HEADERS <QGuiApplication> <QImage> <QPainter> <QScreen> <QWindow>)
set(NORVANE_TEST_HEADERS <gtest/gtest.h> <future>)

# precompile(<target> <set> <headers>...): the first target that asks for a set makes it, those that
# follow use what it made; all of them must be compiled with the same options.
function(precompile target set)
    get_property(maker GLOBAL PROPERTY norvane_precompiled_${set})
    if(maker)
        target_precompile_headers(${target} REUSE_FROM ${maker})
    else()
        target_precompile_headers(${target} PRIVATE ${ARGN})
        set_property(GLOBAL PROPERTY norvane_precompiled_${set} ${target})
    endif()
endfunction()
