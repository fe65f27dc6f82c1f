#include "viewer/ImageReading.h"

#include "fileops/engine/ProblemList.h"

#include <TranslationErrors.h>
#include <TranslationUtils.h>

namespace norvane {

namespace {

const char* ReasonForImage(status_t status)
{
    switch (status) {
    case B_NO_TRANSLATOR:
        return "nothing here reads its format";
    case B_ILLEGAL_DATA:
        return "the file is damaged";
    case B_NO_MEMORY:
        return "it takes more than 512 MB when it is unpacked";
    default:
        return ReasonFor(status);
    }
}

} // namespace

std::unique_ptr<BBitmap> ReadImage(const std::string& path, std::string* trouble)
{
    status_t status = B_OK;
    std::unique_ptr<BBitmap> image(BTranslationUtils::GetBitmap(path.c_str(), &status));
    if (image == nullptr) {
        *trouble = ReasonForImage(status);
    }
    return image;
}

} // namespace norvane
