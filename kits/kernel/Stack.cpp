#include "kernel/Stack.h"

#include <atomic>
#include <cstdlib>
#include <cxxabi.h>
#include <exception>
#include <execinfo.h>
#include <memory>
#include <pthread.h>
#include <string>
#include <typeinfo>
#include <unistd.h>

namespace kits {

namespace {

void Print(const std::string& text)
{
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

std::string NameOf(const std::type_info& type)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? name.get() : type.name();
}

/// The exception's type, and what it says of itself.
std::string DescribeException()
{
    const std::exception_ptr thrown = std::current_exception();
    if (thrown == nullptr) {
        return "The program was told to end";
    }
    const std::string name = NameOf(*abi::__cxa_current_exception_type());
    try {
        std::rethrow_exception(thrown);
    } catch (const std::exception& exception) {
        return "Nobody catches an exception: " + name + ": " + exception.what();
    } catch (...) {
        return "Nobody catches an exception: " + name;
    }
}

[[noreturn]] void OnTerminate()
{
    static std::atomic_flag isEnding;
    thread_local bool isTelling = false;
    if (isTelling) {
        std::abort(); // telling fails
    }
    while (isEnding.test_and_set()) {
        ::pause(); // another thread tells, and then ends the program
    }
    isTelling = true;
    char thread[16] = "";
    ::pthread_getname_np(::pthread_self(), thread, sizeof(thread));
    EndWithStack((DescribeException() + ", on the thread \"" + thread + "\"").c_str());
}

// Before main(): what is thrown there ends the program the same way.
[[maybe_unused]] const std::terminate_handler sFormerHandler = std::set_terminate(&OnTerminate);

} // namespace

void PrintStack()
{
    void* frames[64];
    ::backtrace_symbols_fd(frames, ::backtrace(frames, 64), STDERR_FILENO);
}

void EndWithStack(const char* complaint)
{
    Print(std::string(complaint) + "\n");
    PrintStack();
    std::abort();
}

HookBoundary::HookBoundary() : fExceptions(std::uncaught_exceptions()) {}

HookBoundary::~HookBoundary()
{
    if (std::uncaught_exceptions() > fExceptions) {
        EndWithStack("An exception leaves a hook");
    }
}

} // namespace kits
