#include <Referenceable.h>

BReferenceable::BReferenceable() = default;

BReferenceable::~BReferenceable() = default;

int32 BReferenceable::AcquireReference()
{
    const int32 before = fCount.fetch_add(1);
    if (before == 0) {
        FirstReferenceAcquired();
    }
    return before;
}

int32 BReferenceable::ReleaseReference()
{
    const int32 before = fCount.fetch_sub(1);
    if (before == 1) {
        LastReferenceReleased();
    }
    return before;
}

void BReferenceable::FirstReferenceAcquired() {}

void BReferenceable::LastReferenceReleased()
{
    delete this;
}
