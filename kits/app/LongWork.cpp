#include "app/LongWork.h"

#ifdef KITS_GUARDS

#include "app/LooperCore.h"

namespace kits {

LongWork::LongWork() : fCore(LooperCore::OfThisThread())
{
    if (fCore != nullptr) {
        fCore->AddLongWorks(1);
    }
}

LongWork::~LongWork()
{
    if (fCore != nullptr) {
        fCore->AddLongWorks(-1);
    }
}

} // namespace kits

#endif
