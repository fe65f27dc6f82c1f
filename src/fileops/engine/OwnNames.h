#pragma once

#include <string>

namespace norvane {

/// True for the name of a file that an operation of this program is writing at this moment, beside
/// the one it will replace. Panes leave such names out; one that a crash left behind is a file like
/// any other. Thread: any.
bool IsOwnTemporaryName(const char* name);

/// A hidden name that nobody else uses, known to IsOwnTemporaryName() as long as this object lives.
/// Thread: any.
class OwnTemporaryName
{
public:
    OwnTemporaryName();
    ~OwnTemporaryName();
    OwnTemporaryName(const OwnTemporaryName&) = delete;
    OwnTemporaryName& operator=(const OwnTemporaryName&) = delete;

    const char* Name() const { return fName.c_str(); }

private:
    std::string fName;
};

} // namespace norvane
