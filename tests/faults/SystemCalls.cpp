// SPDX-License-Identifier: MIT
#include "faults/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

namespace
{
struct t_Watch
{
    t_SystemCallFault fault;
    std::vector<t_SystemCall> calls;
    bool isOn = false;
};

thread_local t_Watch t_watch;

template <typename TFunction>
TFunction* Next(const char* name)
{
    return reinterpret_cast<TFunction*>(dlsym(RTLD_NEXT, name));
}

QByteArray PathOf(const char* path)
{
    return path;
}

QByteArray PathOf(int file)
{
    char path[PATH_MAX];
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(file);
    const ssize_t length = readlink(link.constData(), path, sizeof path);
    return length < 0 ? QByteArray() : QByteArray(path, static_cast<int>(length));
}

/** Notes a call that acts on a path or an open file; true when it fails, with errno set. */
template <typename TTarget>
bool Strikes(const char* name, TTarget target)
{
    if (!t_watch.isOn)
    {
        return false;
    }
    const std::size_t place = t_watch.calls.size();
    if (place == t_watch.fault.lastCall)
    {
        _exit(0);
    }
    // Off meanwhile: the list's own memory is nobody's fault.
    t_watch.isOn = false;
    t_watch.calls.push_back({name, PathOf(target)});
    t_watch.isOn = true;
    const std::size_t failing = t_watch.fault.failingCall;
    const bool fails = place >= failing && t_watch.calls[failing].name == name;
    errno = fails ? t_watch.fault.error : errno;
    return fails;
}

int Open(const char* name, const char* path, int flags, mode_t mode)
{
    const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & O_DIRECTORY) != 0;
    if (writes && Strikes("open", path))
    {
        return -1;
    }
    return Next<int(const char*, int, ...)>(name)(path, flags, mode);
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t)
                                                                      : 0;
}
} // namespace

CSystemCallFault::CSystemCallFault(const t_SystemCallFault& fault)
{
    t_watch.fault = fault;
    t_watch.calls.clear();
    t_watch.isOn = true;
}

CSystemCallFault::~CSystemCallFault()
{
    t_watch.isOn = false;
}

const std::vector<t_SystemCall>& CSystemCallFault::Calls() const
{
    return t_watch.calls;
}

#define KWI_INTERPOSED extern "C" __attribute__((visibility("default")))

KWI_INTERPOSED int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open", path, flags, mode);
}

KWI_INTERPOSED int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open64", path, flags, mode);
}

KWI_INTERPOSED ssize_t write(int file, const void* data, size_t size)
{
    if (file > STDERR_FILENO && Strikes("write", file))
    {
        return -1;
    }
    if (t_watch.isOn && file > STDERR_FILENO && t_watch.fault.room != t_SystemCallFault::kNever)
    {
        if (t_watch.fault.room == 0)
        {
            errno = ENOSPC;
            return -1;
        }
        size = std::min(size, t_watch.fault.room);
        t_watch.fault.room -= size;
    }
    return Next<ssize_t(int, const void*, size_t)>("write")(file, data, size);
}

KWI_INTERPOSED int fsync(int file)
{
    return Strikes("fsync", file) ? -1 : Next<int(int)>("fsync")(file);
}

KWI_INTERPOSED int fdatasync(int file)
{
    return Strikes("fsync", file) ? -1 : Next<int(int)>("fdatasync")(file);
}

KWI_INTERPOSED int rename(const char* from, const char* to) noexcept
{
    return Strikes("rename", to) ? -1 : Next<int(const char*, const char*)>("rename")(from, to);
}

KWI_INTERPOSED int linkat(int fromFolder, const char* from, int toFolder, const char* to,
                          int flags) noexcept
{
    return Strikes("linkat", to) ? -1
                                 : Next<int(int, const char*, int, const char*, int)>("linkat")(
                                       fromFolder, from, toFolder, to, flags);
}

KWI_INTERPOSED int close(int file)
{
    // The file is closed even where that fails.
    const bool strikes = file > STDERR_FILENO && Strikes("close", file);
    const int error = errno;
    const int answer = Next<int(int)>("close")(file);
    errno = strikes ? error : errno;
    return strikes ? -1 : answer;
}
