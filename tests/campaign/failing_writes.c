// Preloaded: counts the calls by which a program writes below FAILING_FOLDER, and makes the one of
// number FAILING_CALL fail with the error number FAILING_ERROR, and with FAILING_ONWARDS set all
// after it too. Which call failed, or without FAILING_CALL how many there were, is told in
// FAILING_REPORT.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

static atomic_int calls;

static int number(const char* variable) {
    const char* text = getenv(variable);
    return text ? atoi(text) : 0;
}

static void report(const char* words, const char* path) {
    const char* file = getenv("FAILING_REPORT");
    FILE* out = file ? fopen(file, "w") : NULL;
    if (out) {
        fprintf(out, "%d %s %s\n", atomic_load(&calls), words, path);
        fclose(out);
    }
}

__attribute__((destructor)) static void tellCount(void) {
    if (number("FAILING_CALL") == 0) {
        report("in all", "");
    }
}

static int isBelowFolder(const char* path) {
    const char* folder = getenv("FAILING_FOLDER");
    return folder && strncmp(path, folder, strlen(folder)) == 0;
}

// True if this call is one that has to fail, with the error then in errno.
static int fails(const char* call, const char* path) {
    if (!isBelowFolder(path)) {
        return 0;
    }
    const int wanted = number("FAILING_CALL");
    const int mine = atomic_fetch_add(&calls, 1) + 1;
    if (wanted == 0 || mine < wanted || (mine > wanted && !getenv("FAILING_ONWARDS"))) {
        return 0;
    }
    if (mine == wanted) {
        report(call, path);
    }
    errno = number("FAILING_ERROR");
    return 1;
}

static int failsOn(const char* call, int file) {
    struct stat status;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        return 0;
    }
    char link[64];
    char path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0) {
        return 0;
    }
    path[length] = '\0';
    return fails(call, path);
}

#define NEXT(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

#define ON_FILE(type, name, parameters, file, ...) \
    type name parameters {                         \
        if (failsOn(#name, file)) {                \
            return -1;                             \
        }                                          \
        return NEXT(name)(__VA_ARGS__);            \
    }

#define ON_PATH(name, parameters, path, ...) \
    int name parameters {                    \
        if (fails(#name, path)) {            \
            return -1;                       \
        }                                    \
        return NEXT(name)(__VA_ARGS__);      \
    }

ON_FILE(ssize_t, write, (int file, const void* bytes, size_t size), file, file, bytes, size)
ON_FILE(ssize_t, pwrite, (int file, const void* bytes, size_t size, off_t place), file, file, bytes,
        size, place)
ON_FILE(ssize_t, pwrite64, (int file, const void* bytes, size_t size, off64_t place), file, file,
        bytes, size, place)
ON_FILE(int, fsync, (int file), file, file)
ON_FILE(int, fdatasync, (int file), file, file)
ON_FILE(int, ftruncate, (int file, off_t size), file, file, size)
ON_FILE(int, ftruncate64, (int file, off64_t size), file, file, size)
ON_PATH(rename, (const char* from, const char* to), to, from, to)
ON_PATH(renameat2, (int fromIn, const char* from, int toIn, const char* to, unsigned flags), to,
        fromIn, from, toIn, to, flags)
ON_PATH(link, (const char* from, const char* to), to, from, to)
ON_PATH(linkat, (int fromIn, const char* from, int toIn, const char* to, int flags), to, fromIn,
        from, toIn, to, flags)
ON_PATH(unlink, (const char* path), path, path)
ON_PATH(mkdir, (const char* path, mode_t mode), path, path, mode)
ON_PATH(rmdir, (const char* path), path, path)

// Only of a file that is made.
#define OPENING(name)                                                                \
    int name(const char* path, int flags, ...) {                                     \
        va_list more;                                                                \
        va_start(more, flags);                                                       \
        const int makes = flags & (O_CREAT | __O_TMPFILE);                           \
        const mode_t mode = makes ? va_arg(more, mode_t) : 0;                        \
        va_end(more);                                                                \
        const int isNew = flags & __O_TMPFILE || (makes && access(path, F_OK) != 0); \
        if (isNew && fails(#name, path)) {                                           \
            return -1;                                                               \
        }                                                                            \
        return NEXT(name)(path, flags, mode);                                        \
    }

OPENING(open)
OPENING(open64)
