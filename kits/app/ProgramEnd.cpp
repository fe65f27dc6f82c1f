#include "app/ProgramEnd.h"

#include <AppDefs.h>
#include <Application.h>

#include <atomic>

namespace kits {

namespace {

std::atomic<bool> sIsRequested{false};

} // namespace

void ProgramEnd::Request()
{
    sIsRequested = true;
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
}

bool ProgramEnd::IsRequested()
{
    return sIsRequested;
}

void ProgramEnd::Forget()
{
    sIsRequested = false;
}

} // namespace kits
