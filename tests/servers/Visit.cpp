#include "Visit.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr unsigned int kTimeout = 10'000;

} // namespace

Visit::Visit(Site site)
    : fSite(std::move(site)),
      fClient(fSite.host.c_str(), fSite.port, nullptr, 0, kTimeout, &Told, this),
      fFolder(fClient, fSite.isPassive)
{
}

int Visit::Told(int percent, int, char* text, void* visit)
{
    auto* self = static_cast<Visit*>(visit);
    if (percent == -1) {
        self->fLog += std::string("    ") + text + "\n";
        return 1;
    }
    return self->atStep ? self->atStep() : 1;
}

int Visit::LogIn()
{
    const int code = fClient.Connect(fSite.user.c_str(), fSite.password.c_str(), nullptr);
    return code != 0 ? code : fFolder.Find();
}

bool Visit::StartIn(const std::string& name)
{
    if (!fClient.IsConnected() && !CheckAgreed(LogIn(), "logging in")) {
        return false;
    }
    fTop = fTop.empty() ? fFolder.Path() : fTop;
    fPath = fSite.folder + "/" + name;
    return CheckAgreed(fFolder.Go(fTop), "going to " + fTop) &&
           CheckAgreed(fClient.MakeDir(name.c_str()), "making " + name) &&
           CheckAgreed(fFolder.Enter(name), "entering " + name) &&
           Check(std::filesystem::is_directory(fPath), fPath + " was not made");
}

bool Visit::Check(bool isWell, const std::string& fault)
{
    if (!isWell) {
        fFaults.push_back(fault);
    }
    return isWell;
}

bool Visit::CheckAgreed(int code, const std::string& what)
{
    return Check(norvane::IsAgreed(code),
                 what + " ended with " + std::to_string(code) + " " + fClient.ReplyText());
}

void Visit::CheckRefused(int code, const std::string& what)
{
    Check(code >= 400 && code < 600, what + " ended with " + std::to_string(code));
    CheckInStep(what);
}

void Visit::CheckInStep(const std::string& after)
{
    // What it returns is about the command before it.
    char* answer = nullptr;
    fClient.PrintDir(&answer);
    const std::string now = norvane::PathInReply(answer);
    std::free(answer);
    Check(now == fFolder.Path(),
          "after " + after + " it is in \"" + now + "\", not in \"" + fFolder.Path() + "\"");
}

void Visit::Clear()
{
    fFaults.clear();
    fMissing.clear();
    fLog.clear();
    atStep = nullptr;
}

bool Visit::Store(const std::string& name, std::string_view bytes)
{
    const int code = fClient.UploadBuffer(bytes.data(), static_cast<int>(bytes.size()),
                                          name.c_str(), true, fSite.isPassive);
    return CheckAgreed(code, "storing " + name);
}

int Visit::Fetch(const std::string& name, std::string* bytes)
{
    char* data = nullptr;
    int length = 0;
    const int code = fClient.DownloadBuffer(&data, &length, name.c_str(), true, fSite.isPassive);
    bytes->assign(data != nullptr ? data : "", static_cast<size_t>(length));
    std::free(data);
    return code;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void WriteFile(const std::string& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string AnyBytes(size_t count)
{
    std::string bytes(count, '\0');
    uint32 state = static_cast<uint32>(count);
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}
