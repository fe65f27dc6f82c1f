#include "storage/QueryPredicate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// Predicates of any text: none may crash, and what a record would decide is decided with one.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using kits::QueryPredicate;
    QueryPredicate predicate;
    if (predicate.SetTo({reinterpret_cast<const char*>(data), size}) != B_OK) {
        return 0;
    }
    BEntryRecord record;
    record.size = 1024;
    for (const std::string_view name : {"", "a", "name.txt", "\xc3\xa4\xff", "[*?]\\"}) {
        const QueryPredicate::Answer early = predicate.Match({name, false, nullptr});
        const QueryPredicate::Answer answer = predicate.Match({name, false, &record});
        const bool isTrue = answer != QueryPredicate::Answer::kUnknown &&
                            (early == QueryPredicate::Answer::kUnknown || early == answer);
        if (!isTrue) {
            std::abort();
        }
    }
    return 0;
}
