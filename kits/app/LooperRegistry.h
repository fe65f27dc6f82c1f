#pragma once

#include <SupportDefs.h>

#include <memory>
#include <vector>

class BHandler;
class BLooper;

namespace kits {

class LooperCore;

/// Which loopers and handlers live. Asked with pointers and tokens that may be stale; nothing they
/// point at is touched.
///
/// Thread: any thread.
class LooperRegistry
{
public:
    /// A handler and the core of its looper; both null when there is none.
    struct Place
    {
        BHandler* handler = nullptr;
        std::shared_ptr<LooperCore> core;
    };

    /// A number that no handler had before. Never 0.
    static int32 NewToken();

    static void AddLooper(const BLooper* looper, const std::shared_ptr<LooperCore>& core);
    static void RemoveLooper(const BLooper* looper);
    /// The core of a looper that lives; null when there is no looper at that address.
    static std::shared_ptr<LooperCore> FindLooper(const BLooper* looper);
    /// In the order of their making.
    static std::vector<std::shared_ptr<LooperCore>> AllLoopers();

    /// Loopers whose threads have not ended, the application's apart; these may outlive their
    /// looper a little.
    static void AddThread(const std::shared_ptr<LooperCore>& core);
    static void RemoveThread(const LooperCore* core);
    static std::vector<std::shared_ptr<LooperCore>> AllThreads();

    /// Says that the handler with that token belongs to the core's looper now.
    static void AddHandler(int32 token, BHandler* handler, const std::shared_ptr<LooperCore>& core);
    static void RemoveHandler(int32 token);
    static Place FindHandler(int32 token);
};

} // namespace kits
