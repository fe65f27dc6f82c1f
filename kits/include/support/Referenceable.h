#pragma once

#include <SupportDefs.h>

#include <atomic>

/// Something that lives as long as anybody holds a reference to it.
///
/// Made with one reference, which belongs to whoever made it. Thread: any.
class BReferenceable
{
public:
    /// Holds one reference, its maker's.
    BReferenceable();
    virtual ~BReferenceable();
    BReferenceable(const BReferenceable&) = delete;
    BReferenceable& operator=(const BReferenceable&) = delete;

    /// Takes one more; returns how many there were before.
    int32 AcquireReference();
    /// Gives one back, the last of which deletes it; returns how many there were before.
    int32 ReleaseReference();
    /// How many there are; others may change it at any moment.
    int32 CountReferences() const { return fCount; }

protected:
    /// Called when the first reference is taken anew.
    virtual void FirstReferenceAcquired();
    /// Called when the last one was given back; deletes the object.
    virtual void LastReferenceReleased();

private:
    std::atomic<int32> fCount{1};
};

/// Holds one reference while it lives.
template<typename Type>
class BReference
{
public:
    /// Holds none.
    BReference() = default;
    /// Takes a reference of its own, or takes over the caller's.
    explicit BReference(Type* object, bool alreadyHasReference = false)
    {
        SetTo(object, alreadyHasReference);
    }
    BReference(const BReference& other) { SetTo(other.fObject); }
    BReference& operator=(const BReference& other)
    {
        if (this != &other) {
            SetTo(other.fObject);
        }
        return *this;
    }
    ~BReference() { Unset(); }

    /// Holds another object, or none.
    void SetTo(Type* object, bool alreadyHasReference = false)
    {
        if (object != nullptr && !alreadyHasReference) {
            object->AcquireReference();
        }
        Unset();
        fObject = object;
    }
    /// Gives its reference back.
    void Unset()
    {
        if (fObject != nullptr) {
            Detach()->ReleaseReference();
        }
    }
    /// Hands its reference over to the caller.
    Type* Detach()
    {
        Type* object = fObject;
        fObject = nullptr;
        return object;
    }
    /// The object, lent; null for none.
    Type* Get() const { return fObject; }
    /// Whether it holds one.
    bool IsSet() const { return fObject != nullptr; }
    Type* operator->() const { return fObject; }
    Type& operator*() const { return *fObject; }

private:
    Type* fObject = nullptr;
};
