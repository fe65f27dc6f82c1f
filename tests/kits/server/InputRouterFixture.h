#pragma once

#include <InterfaceDefs.h>

#include "server/InputRouter.h"
#include "server/ShowRequest.h"

#include <gtest/gtest.h>

inline constexpr int32 kA = 1;
inline constexpr int32 kB = 2;
inline constexpr int32 kC = 3;
inline constexpr int32 kMenu = 4;

inline constexpr int32 kReturn = 36;
inline constexpr int32 kLetter = 38;
inline constexpr bigtime_t kPatience = 1'000'000; // how long a window waits for the focus

inline kits::ShowRequest DialogOf(int32 opener)
{
    kits::ShowRequest request;
    request.opener = opener;
    return request;
}

inline kits::ShowRequest ModalOf(int32 opener)
{
    kits::ShowRequest request = DialogOf(opener);
    request.isModal = true;
    request.isExemptFromModal = true;
    return request;
}

/// A router that knows one window, which has the focus.
class InputRouterFixture : public ::testing::Test
{
protected:
    InputRouterFixture()
    {
        fRouter.Shown(kA, {}, false, 0);
        fRouter.FocusChanged(kA);
    }

    void FocusGoesTo(int32 window, bigtime_t now)
    {
        fRouter.FocusComes(window, now);
        fRouter.FocusChanged(window);
    }
    kits::InputRouter::KeyTarget Press(int32 native, int32 code, bigtime_t now = 0)
    {
        return fRouter.KeyPressed({native, code, false, now}, now);
    }
    int32 Release(int32 native, int32 code, bigtime_t when = 0)
    {
        return fRouter.KeyReleased({native, code, false, when});
    }

    kits::InputRouter fRouter;
};
