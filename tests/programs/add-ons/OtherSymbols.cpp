// A library that has something called process_refs, which is no function.

#include <cstdlib>

extern "C" {
__attribute__((visibility("default"))) extern int process_refs;
int process_refs = 1;

__attribute__((visibility("default"))) void do_nothing();
void do_nothing()
{
    std::getenv("NOTHING");
}
}
