#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

/// Stands in front of the C library (LD_PRELOAD) and has one call of a kind fail, from the start of `main` on:
///
///   FAILING_CALL=write:5    the fifth write fails, for want of space
///   FAILING_CALL=write:5-   so do all that follow
///   FAILING_IMAGE=2         not in this process image, but in the one that replaces it
///   CALL_COUNTS=FILE        appends a line "KIND COUNT" for each kind to the file when the process ends or replaces itself
///
/// The kinds are in the table below. What the loader and the libraries' own initialisers do before `main` is left alone.

namespace {

enum Kind { allocation, opening, reading, writing, renaming, mapping, kindCount };

struct KindOfCall {
    std::string_view name;
    int error;
};

constexpr KindOfCall kinds[kindCount] = {
    {"allocation", ENOMEM}, {"open", EMFILE}, {"read", EIO}, {"write", ENOSPC}, {"rename", EIO}, {"mmap", ENOMEM},
};

std::atomic<bool> counts = false;
std::atomic<long> made[kindCount];
int chosenKind = kindCount;
long firstFailing = 0;
bool restFails = false;

/// Whether this call is to fail; errno is set then.
bool fails(Kind kind)
{
    if (!counts.load(std::memory_order_relaxed))
        return false;
    const long number = ++made[kind];
    if (kind != chosenKind || (restFails ? number < firstFailing : number != firstFailing))
        return false;
    errno = kinds[kind].error;
    return true;
}

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

void writeCounts()
{
    counts = false;
    const char* const file = std::getenv("CALL_COUNTS");
    std::FILE* const stream = file == nullptr ? nullptr : std::fopen(file, "a");
    if (stream == nullptr)
        return;
    for (int kind = 0; kind < kindCount; ++kind)
        std::fprintf(stream, "%s %ld\n", kinds[kind].name.data(), made[kind].load());
    std::fclose(stream);
}

void readEnvironment()
{
    const char* const chosen = std::getenv("FAILING_CALL");
    const char* const colon = chosen == nullptr ? nullptr : std::strchr(chosen, ':');
    if (colon == nullptr)
        return;
    const std::string_view name(chosen, static_cast<std::size_t>(colon - chosen));
    for (int kind = 0; kind < kindCount; ++kind) {
        if (kinds[kind].name == name)
            chosenKind = kind;
    }
    const char* const image = std::getenv("FAILING_IMAGE");
    if (image != nullptr && std::atoi(image) > 1) {
        ::setenv("FAILING_IMAGE", std::to_string(std::atoi(image) - 1).c_str(), 1);
        return;
    }
    char* end = nullptr;
    firstFailing = std::strtol(colon + 1, &end, 10);
    restFails = *end == '-';
}

using Main = int(int, char**, char**);
Main* programsMain = nullptr;

int countedMain(int count, char** arguments, char** environment)
{
    readEnvironment();
    std::atexit(&writeCounts);
    counts = true;
    return programsMain(count, arguments, environment);
}

/// The mode of a call that may create a file.
mode_t modeIn(int flags, std::va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

// The C library's own, by the names under which it offers them to those who stand in front.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

int __libc_start_main(Main* main, int count, char** arguments, void (*begin)(), void (*end)(), void (*finish)(), void* stackEnd)
{
    programsMain = main;
    return next<int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*)>("__libc_start_main")(
        &countedMain, count, arguments, begin, end, finish, stackEnd);
}

int execv(const char* file, char* const* arguments)
{
    writeCounts();
    return next<int(const char*, char* const*)>("execv")(file, arguments);
}

void* malloc(std::size_t size)
{
    return fails(allocation) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    return fails(allocation) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size)
{
    return fails(allocation) ? nullptr : __libc_realloc(memory, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    if (fails(allocation))
        return ENOMEM;
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? ENOMEM : 0;
}

int open(const char* file, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return fails(opening) ? -1 : next<int(const char*, int, ...)>("open")(file, flags, mode);
}

int open64(const char* file, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return fails(opening) ? -1 : next<int(const char*, int, ...)>("open64")(file, flags, mode);
}

int openat(int folder, const char* file, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return fails(opening) ? -1 : next<int(int, const char*, int, ...)>("openat")(folder, file, flags, mode);
}

std::FILE* fopen(const char* file, const char* mode)
{
    return fails(opening) ? nullptr : next<std::FILE*(const char*, const char*)>("fopen")(file, mode);
}

std::FILE* fopen64(const char* file, const char* mode)
{
    return fails(opening) ? nullptr : next<std::FILE*(const char*, const char*)>("fopen64")(file, mode);
}

ssize_t read(int descriptor, void* bytes, std::size_t count)
{
    return fails(reading) ? -1 : next<ssize_t(int, void*, std::size_t)>("read")(descriptor, bytes, count);
}

ssize_t write(int descriptor, const void* bytes, std::size_t count)
{
    // What a program says of its troubles is heard.
    const bool isFailing = descriptor != STDERR_FILENO && fails(writing);
    return isFailing ? -1 : next<ssize_t(int, const void*, std::size_t)>("write")(descriptor, bytes, count);
}

int rename(const char* from, const char* to)
{
    return fails(renaming) ? -1 : next<int(const char*, const char*)>("rename")(from, to);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int descriptor, off_t offset)
{
    return fails(mapping) ? MAP_FAILED
                          : next<void*(void*, std::size_t, int, int, int, off_t)>("mmap")(address, size, protection, flags,
                                                                                          descriptor, offset);
}

void* mmap64(void* address, std::size_t size, int protection, int flags, int descriptor, off64_t offset)
{
    return fails(mapping) ? MAP_FAILED
                          : next<void*(void*, std::size_t, int, int, int, off64_t)>("mmap64")(address, size, protection, flags,
                                                                                              descriptor, offset);
}
}
#pragma GCC visibility pop
