#pragma once

#include <cstdlib>
#include <string>

/// Sets a variable of the environment, or removes it (null), as long as this object lives.
class Variable
{
public:
    Variable(const char* name, const char* value) : fName(name)
    {
        const char* before = std::getenv(name);
        fHadValue = before != nullptr;
        fBefore = fHadValue ? before : "";
        value != nullptr ? setenv(name, value, 1) : unsetenv(name);
    }
    ~Variable() { fHadValue ? setenv(fName, fBefore.c_str(), 1) : unsetenv(fName); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* fName;
    std::string fBefore;
    bool fHadValue;
};
