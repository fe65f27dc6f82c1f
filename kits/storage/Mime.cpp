#include <Mime.h>

#include <algorithm>
#include <cstring>
#include <strings.h>

BMimeType::BMimeType(const char* type)
{
    SetTo(type);
}

status_t BMimeType::SetTo(const char* type)
{
    if (!IsValid(type)) {
        Unset();
        fStatus = B_BAD_VALUE;
        return fStatus;
    }
    fType = type;
    fStatus = B_OK;
    return B_OK;
}

void BMimeType::Unset()
{
    fType.clear();
    fStatus = B_NO_INIT;
}

const char* BMimeType::Type() const
{
    return fStatus == B_OK ? fType.c_str() : nullptr;
}

bool BMimeType::IsSupertypeOnly() const
{
    return fStatus == B_OK && fType.find('/') == std::string::npos;
}

status_t BMimeType::GetSupertype(BMimeType* supertype) const
{
    if (supertype == nullptr) {
        return B_BAD_VALUE;
    }
    const size_t slash = fType.find('/');
    if (fStatus != B_OK || slash == std::string::npos) {
        return B_BAD_VALUE;
    }
    const std::string family = fType.substr(0, slash); // `supertype` may be this object
    return supertype->SetTo(family.c_str());
}

bool BMimeType::operator==(const BMimeType& other) const
{
    return operator==(other.Type());
}

bool BMimeType::operator==(const char* type) const
{
    if (fStatus != B_OK || type == nullptr) {
        return fStatus != B_OK && type == nullptr;
    }
    return strcasecmp(fType.c_str(), type) == 0;
}

bool BMimeType::Contains(const BMimeType* type) const
{
    if (type == nullptr || fStatus != B_OK || type->fStatus != B_OK) {
        return false;
    }
    if (*this == *type) {
        return true;
    }
    BMimeType family;
    return IsSupertypeOnly() && type->GetSupertype(&family) == B_OK && *this == family;
}

bool BMimeType::IsValid(const char* type)
{
    if (type == nullptr || *type == '\0' || std::strlen(type) >= B_MIME_TYPE_LENGTH) {
        return false;
    }
    int32 slashes = 0;
    for (const char* at = type; *at != '\0'; ++at) {
        const bool isBorder = at == type || at[1] == '\0';
        if (*at == '/' && (++slashes > 1 || isBorder)) {
            return false;
        }
        if (*at <= ' ' || *at > '~' || std::strchr("<>@,;:\"()[]?=", *at) != nullptr) {
            return false;
        }
    }
    return true;
}
