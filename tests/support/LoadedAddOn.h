#pragma once

#include <EntryRef.h>
#include <Message.h>
#include <TrackerAddOn.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>
#include <thread>
#include <vector>

/// An add-on as the program has it: a library, loaded for ever, whose one function is called on a
/// thread of its own.
class LoadedAddOn
{
public:
    explicit LoadedAddOn(const std::string& path)
    {
        void* image = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(image, nullptr) << dlerror();
        fFunction = image != nullptr
                        ? reinterpret_cast<decltype(&process_refs)>(dlsym(image, "process_refs"))
                        : nullptr;
        EXPECT_NE(fFunction, nullptr);
    }

    /// Calls it and waits until it returns.
    void Call(const std::vector<entry_ref>& refs) const
    {
        BMessage message;
        for (const entry_ref& ref : refs) {
            message.AddRef("refs", &ref);
        }
        std::thread([&] { fFunction(entry_ref(), &message, nullptr); }).join();
    }

private:
    decltype(&process_refs) fFunction;
};
