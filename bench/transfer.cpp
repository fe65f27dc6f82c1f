// How long BFileTransfer takes by itself: prints the milliseconds, and those of its longest piece.
//
//   transfer FROM TO     copies the file FROM to the new file TO

#include <File.h>
#include <FileTransfer.h>
#include <OS.h>

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("transfer FROM TO\n", stderr);
        return 1;
    }
    const bigtime_t begin = system_time();
    bigtime_t longest = 0;
    ssize_t count = 0;
    {
        BFile source(argv[1], B_READ_ONLY);
        BFile target(argv[2], B_WRITE_ONLY | B_CREATE_FILE | B_FAIL_IF_EXISTS);
        BFileTransfer transfer(&source, &target);
        do {
            const bigtime_t piece = system_time();
            count = transfer.Next();
            longest = std::max(longest, system_time() - piece);
        } while (count > 0);
    }
    std::printf("%.1f %.1f\n", static_cast<double>(system_time() - begin) / 1e3,
                static_cast<double>(longest) / 1e3);
    if (count < 0) {
        std::fprintf(stderr, "transfer: failed with %lx\n", static_cast<unsigned long>(count));
    }
    return count < 0 ? 1 : 0;
}
