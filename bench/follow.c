// What others do to a folder, and the least that following it takes.
//
//   follow beside FOLDER COUNT   makes COUNT files there while a bare reader of the kernel's
//   notices
//                                looks at each; prints the milliseconds until it has seen them all
//   follow rename FOLDER COUNT   gives COUNT files of it other names, in an order of their hashes
//   follow remove FOLDER COUNT   removes them in that order
//   follow touch FOLDER RATE     changes the date of the folder's last file so many times a second,
//                                until it is ended

#define _GNU_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static double Now(void)
{
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

static void Make(int folder, int count)
{
    for (int i = 0; i < count; i++) {
        char name[32];
        snprintf(name, sizeof(name), "made-%08d", i);
        close(openat(folder, name, O_CREAT | O_EXCL | O_WRONLY, 0644));
    }
}

static int Beside(const char* path, int folder, int count)
{
    int notices = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(notices, path, IN_CREATE);
    double begin = Now();
    pid_t maker = fork();
    if (maker == 0) {
        Make(folder, count);
        _exit(0);
    }
    static char bytes[1 << 16];
    for (int seen = 0; seen < count;) {
        ssize_t length = read(notices, bytes, sizeof(bytes));
        for (char* at = bytes; at < bytes + length;) {
            struct inotify_event* event = (struct inotify_event*)at;
            struct stat st;
            if ((event->mask & IN_Q_OVERFLOW) != 0) {
                return 1;
            }
            fstatat(folder, event->name, &st, AT_SYMLINK_NOFOLLOW);
            seen++;
            at += sizeof(*event) + event->len;
        }
    }
    printf("%.1f\n", Now() - begin);
    waitpid(maker, NULL, 0);
    return 0;
}

static unsigned Hash(const char* name)
{
    unsigned hash = 2166136261u;
    for (; *name != '\0'; name++) {
        hash = (hash ^ (unsigned char)*name) * 16777619u;
    }
    return hash;
}

static int Compare(const void* a, const void* b)
{
    unsigned left = Hash(*(char* const*)a);
    unsigned right = Hash(*(char* const*)b);
    return left < right ? -1 : left > right;
}

static int Change(int folder, int count, int isRename)
{
    DIR* listing = fdopendir(dup(folder));
    char** names = malloc(sizeof(char*) * (size_t)(count + 1));
    int found = 0;
    for (struct dirent* entry = readdir(listing); entry != NULL && found < count;
         entry = readdir(listing)) {
        if (entry->d_name[0] != '.') {
            names[found++] = strdup(entry->d_name);
        }
    }
    closedir(listing);
    qsort(names, (size_t)found, sizeof(char*), Compare);
    for (int i = 0; i < found; i++) {
        char other[64];
        snprintf(other, sizeof(other), "%08x-%d", Hash(names[i]), i);
        if (isRename) {
            renameat(folder, names[i], folder, other);
        } else {
            unlinkat(folder, names[i], 0);
        }
    }
    return 0;
}

static int Touch(int folder, int rate)
{
    DIR* listing = fdopendir(dup(folder));
    char last[256] = "";
    for (struct dirent* entry = readdir(listing); entry != NULL; entry = readdir(listing)) {
        if (strcmp(entry->d_name, last) > 0) {
            strcpy(last, entry->d_name);
        }
    }
    closedir(listing);
    struct timespec pause = {0, 1000000000L / rate};
    for (;;) {
        utimensat(folder, last, NULL, 0);
        nanosleep(&pause, NULL);
    }
}

int main(int argc, char** argv)
{
    int folder = argc == 4 ? open(argv[2], O_RDONLY | O_DIRECTORY) : -1;
    if (folder < 0) {
        fputs("follow: beside|rename|remove FOLDER COUNT | touch FOLDER RATE\n", stderr);
        return 1;
    }
    int number = atoi(argv[3]);
    if (strcmp(argv[1], "beside") == 0) {
        return Beside(argv[2], folder, number);
    }
    if (strcmp(argv[1], "touch") == 0) {
        return Touch(folder, number);
    }
    return Change(folder, number, strcmp(argv[1], "rename") == 0);
}
