// What work on a tree costs at the least, and the trees to measure it on. Prints milliseconds.
//
//   tree make FOLDER FOLDERS FILES   FILES files of 1 to 16 KiB, spread over FOLDERS folders
//   tree copy FROM TO                FROM into the folder TO, by two threads
//   tree remove FOLDER               by two threads
//   tree trash FOLDER TRASH          each entry with its record into a Trash, as renames alone

#define _GNU_SOURCE
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

enum { LARGEST_FILE = 16 * 1024, WORKERS = 2 };

struct task
{
    struct task* next;
    char* from;
    char* to; // NULL: remove
    struct task* parent;
    int below; // folders of it that are left, and itself while it is listed; under the lock
};

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static pthread_cond_t changed = PTHREAD_COND_INITIALIZER;
static struct task* waiting; // under the lock
static int unfinished;       // under the lock

static void fail(const char* what)
{
    perror(what);
    exit(1);
}

static char* join(const char* folder, const char* name)
{
    char* path;
    if (asprintf(&path, "%s/%s", folder, name) < 0) {
        fail("tree");
    }
    return path;
}

static void add(char* from, char* to, struct task* parent)
{
    struct task* task = malloc(sizeof *task);
    *task = (struct task){NULL, from, to, parent, 1};
    pthread_mutex_lock(&lock);
    if (parent != NULL) {
        parent->below++;
    }
    task->next = waiting;
    waiting = task;
    unfinished++;
    pthread_cond_signal(&changed);
    pthread_mutex_unlock(&lock);
}

// A folder goes when everything below it has gone.
static void finish(struct task* task)
{
    while (task != NULL) {
        pthread_mutex_lock(&lock);
        const int left = --task->below;
        pthread_mutex_unlock(&lock);
        if (left > 0) {
            return;
        }
        if (task->to == NULL && rmdir(task->from) != 0) {
            fail(task->from);
        }
        struct task* parent = task->parent;
        free(task->from);
        free(task->to);
        free(task);
        task = parent;
    }
}

static void copy_file(int from, int to, const char* name)
{
    char bytes[LARGEST_FILE + 1];
    const int source = openat(from, name, O_RDONLY | O_NOFOLLOW);
    const int target = openat(to, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0644);
    if (source < 0 || target < 0) {
        fail(name);
    }
    for (ssize_t count; (count = read(source, bytes, sizeof bytes)) > 0;) {
        if (write(target, bytes, (size_t)count) != count) {
            fail(name);
        }
        if (count < (ssize_t)sizeof bytes) {
            break;
        }
    }
    close(source);
    close(target);
}

static void run(struct task* task)
{
    if (task->to != NULL && mkdir(task->to, 0755) != 0) {
        fail(task->to);
    }
    DIR* folder = opendir(task->from);
    const int to = task->to == NULL ? -1 : open(task->to, O_RDONLY | O_DIRECTORY);
    if (folder == NULL || (task->to != NULL && to < 0)) {
        fail(task->from);
    }
    for (struct dirent* entry; (entry = readdir(folder)) != NULL;) {
        if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        if (entry->d_type == DT_DIR) {
            add(join(task->from, entry->d_name),
                task->to == NULL ? NULL : join(task->to, entry->d_name), task);
        } else if (task->to != NULL) {
            copy_file(dirfd(folder), to, entry->d_name);
        } else if (unlinkat(dirfd(folder), entry->d_name, 0) != 0) {
            fail(entry->d_name);
        }
    }
    closedir(folder);
    if (to >= 0) {
        close(to);
    }
}

static void* work(void* unused)
{
    (void)unused;
    for (;;) {
        pthread_mutex_lock(&lock);
        while (waiting == NULL && unfinished > 0) {
            pthread_cond_wait(&changed, &lock);
        }
        struct task* task = waiting;
        if (task != NULL) {
            waiting = task->next;
        }
        pthread_mutex_unlock(&lock);
        if (task == NULL) {
            return NULL;
        }
        run(task);
        finish(task);
        pthread_mutex_lock(&lock);
        unfinished--;
        pthread_cond_broadcast(&changed);
        pthread_mutex_unlock(&lock);
    }
}

static void walk(const char* from, const char* to)
{
    pthread_t workers[WORKERS];
    add(strdup(from), to == NULL ? NULL : join(to, strrchr(from, '/') + 1), NULL);
    for (int i = 0; i < WORKERS; i++) {
        pthread_create(&workers[i], NULL, work, NULL);
    }
    for (int i = 0; i < WORKERS; i++) {
        pthread_join(workers[i], NULL);
    }
}

static void make(const char* root, int folders, int files)
{
    static char bytes[LARGEST_FILE];
    memset(bytes, 'x', sizeof bytes);
    mkdir(root, 0755);
    for (int i = 0; i < folders; i++) {
        char path[64];
        snprintf(path, sizeof path, "folder-%05d", i);
        char* folder = join(root, path);
        if (mkdir(folder, 0755) != 0) {
            fail(folder);
        }
        for (int k = i; k < files; k += folders) {
            snprintf(path, sizeof path, "file-%07d", k);
            char* name = join(folder, path);
            const int file = open(name, O_WRONLY | O_CREAT | O_EXCL, 0644);
            const size_t size = (size_t)(1 + k % 16) * 1024;
            if (file < 0 || write(file, bytes, size) != (ssize_t)size) {
                fail(name);
            }
            close(file);
            free(name);
        }
        free(folder);
    }
}

static void trash(const char* path, const char* trash_folder)
{
    char* files_path = join(trash_folder, "files");
    char* info_path = join(trash_folder, "info");
    DIR* folder = opendir(path);
    const int files = open(files_path, O_RDONLY | O_DIRECTORY);
    const int info = open(info_path, O_RDONLY | O_DIRECTORY);
    if (folder == NULL || files < 0 || info < 0) {
        fail(trash_folder);
    }
    for (struct dirent* entry; (entry = readdir(folder)) != NULL;) {
        if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0) {
            continue;
        }
        char name[300], record[5000];
        snprintf(name, sizeof name, "%s.trashinfo", entry->d_name);
        const int length = snprintf(record, sizeof record,
                                    "[Trash Info]\nPath=%s/%s\nDeletionDate=2026-01-01T00:00:00\n",
                                    path, entry->d_name);
        const int file = openat(info, name, O_WRONLY | O_CREAT | O_EXCL, 0600);
        if (file < 0 || write(file, record, (size_t)length) != length) {
            fail(name);
        }
        close(file);
        if (renameat2(dirfd(folder), entry->d_name, files, entry->d_name, RENAME_NOREPLACE) != 0) {
            fail(entry->d_name);
        }
    }
    closedir(folder);
}

int main(int argc, char** argv)
{
    const char* job = argc > 2 ? argv[1] : "";
    struct timespec begin, end;
    clock_gettime(CLOCK_MONOTONIC, &begin);
    if (strcmp(job, "make") == 0 && argc == 5) {
        make(argv[2], atoi(argv[3]), atoi(argv[4]));
    } else if (strcmp(job, "copy") == 0 && argc == 4) {
        walk(argv[2], argv[3]);
    } else if (strcmp(job, "remove") == 0 && argc == 3) {
        walk(argv[2], NULL);
    } else if (strcmp(job, "trash") == 0 && argc == 4) {
        trash(argv[2], argv[3]);
    } else {
        fputs("tree make FOLDER FOLDERS FILES | copy FROM TO | remove FOLDER | trash FOLDER TRASH\n",
              stderr);
        return 1;
    }
    clock_gettime(CLOCK_MONOTONIC, &end);
    printf("%.1f\n", (end.tv_sec - begin.tv_sec) * 1e3 + (end.tv_nsec - begin.tv_nsec) / 1e6);
    return 0;
}
