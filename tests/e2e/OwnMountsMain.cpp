// own-mounts COMMAND...: runs it where it may mount what nobody else sees.

#include "OwnMounts.h"

#include <cstdio>
#include <unistd.h>

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 2) {
        std::fprintf(stderr, "usage: own-mounts COMMAND...\n");
        return 2;
    }
    if (!EnterOwnMounts()) {
        std::fprintf(stderr, "own-mounts: this system allows no private mounts\n");
        return 1;
    }
    execvp(arguments[1], arguments + 1);
    std::perror(arguments[1]);
    return 127;
}
