#include "Checksums/Sha256.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace checksums {

struct Sha256::Context
{
    EVP_MD_CTX* digest = nullptr; // null: there is no memory
    bool isGood = false;
};

Sha256::Sha256() : fContext(std::make_unique<Context>())
{
    // The library is not taken down at the program's end: a sum may still be worked out then.
    OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    fContext->digest = EVP_MD_CTX_new();
    fContext->isGood = fContext->digest != nullptr &&
                       EVP_DigestInit_ex(fContext->digest, EVP_sha256(), nullptr) == 1;
}

Sha256::~Sha256()
{
    EVP_MD_CTX_free(fContext->digest);
}

void Sha256::Add(const void* bytes, size_t count)
{
    fContext->isGood = fContext->isGood && EVP_DigestUpdate(fContext->digest, bytes, count) == 1;
}

std::string Sha256::Finish()
{
    unsigned char sum[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    if (!fContext->isGood || EVP_DigestFinal_ex(fContext->digest, sum, &length) != 1) {
        return {};
    }
    fContext->isGood = false;
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned place = 0; place < length; place++) {
        text += kDigits[sum[place] >> 4];
        text += kDigits[sum[place] & 15];
    }
    return text;
}

} // namespace checksums
