#include <image.h>

#include "ProgramFile.h"

#include <cstdio>
#include <dlfcn.h>
#include <link.h>
#include <map>
#include <mutex>

// Here and not with the kernel kit, which knows nothing of files.

namespace {

/// The libraries that were loaded, by their numbers.
class Images
{
public:
    static Images& Get()
    {
        // Never destroyed: add-ons may run until the program's end.
        static auto* images = new Images;
        return *images;
    }

    image_id Add(void* handle)
    {
        const std::lock_guard lock(fMutex);
        for (const auto& [image, known] : fHandles) {
            if (known == handle) {
                return image;
            }
        }
        fHandles[++fLast] = handle;
        return fLast;
    }

    /// Null when there is none.
    void* Find(image_id image)
    {
        const std::lock_guard lock(fMutex);
        const auto found = fHandles.find(image);
        return found != fHandles.end() ? found->second : nullptr;
    }

    void Forget(image_id image)
    {
        const std::lock_guard lock(fMutex);
        fHandles.erase(image);
    }

private:
    std::mutex fMutex; // guards all below
    std::map<image_id, void*> fHandles;
    image_id fLast = 0;
};

/// Whether an address is in the library itself rather than in one that it is linked to, and of the
/// kind.
bool Fits(void* handle, void* address, int32 type)
{
    const struct link_map* own = nullptr;
    const struct link_map* found = nullptr;
    const ElfW(Sym)* symbol = nullptr;
    Dl_info place;
    if (::dlinfo(handle, RTLD_DI_LINKMAP, &own) != 0 ||
        ::dladdr1(address, &place, reinterpret_cast<void**>(const_cast<struct link_map**>(&found)),
                  RTLD_DL_LINKMAP) == 0 ||
        ::dladdr1(address, &place, reinterpret_cast<void**>(const_cast<ElfW(Sym)**>(&symbol)),
                  RTLD_DL_SYMENT) == 0 ||
        found != own || symbol == nullptr) {
        return false;
    }
    const int kind = ELF64_ST_TYPE(symbol->st_info); // the same in both classes
    const bool isCode = kind == STT_FUNC || kind == STT_GNU_IFUNC;
    return type == B_SYMBOL_TYPE_ANY || (type == B_SYMBOL_TYPE_TEXT) == isCode;
}

} // namespace

image_id load_add_on(const char* path)
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    const status_t status = kits::CheckLibraryFile(path);
    if (status != B_OK) {
        return status;
    }
    // At once, so that nothing that is missing comes up in the middle of its work.
    void* handle = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* reason = ::dlerror();
        std::fprintf(stderr, "load_add_on: %s\n", reason != nullptr ? reason : path);
        return B_MISSING_LIBRARY;
    }
    return Images::Get().Add(handle);
}

status_t unload_add_on(image_id image)
{
    void* handle = Images::Get().Find(image);
    if (handle == nullptr) {
        return B_BAD_IMAGE_ID;
    }
    const struct link_map* map = nullptr;
    const std::string path = ::dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0 ? map->l_name : "";
    ::dlclose(handle);
    // Still there when it was loaded more than once.
    void* left = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (left != handle) {
        Images::Get().Forget(image);
    }
    if (left != nullptr) {
        ::dlclose(left);
    }
    return B_OK;
}

status_t get_image_symbol(image_id image, const char* name, int32 type, void** location)
{
    if (name == nullptr || location == nullptr) {
        return B_BAD_VALUE;
    }
    void* handle = Images::Get().Find(image);
    if (handle == nullptr) {
        return B_BAD_IMAGE_ID;
    }
    void* address = ::dlsym(handle, name);
    if (address == nullptr || !Fits(handle, address, type)) {
        return B_MISSING_SYMBOL;
    }
    *location = address;
    return B_OK;
}
