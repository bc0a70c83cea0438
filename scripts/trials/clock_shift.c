// Shifts the clocks of one program while it runs, for trials of clock steps, dates to come and long uptimes. Preloaded
// (LD_PRELOAD); the file named by CLOCK_SHIFT holds one or two numbers, in seconds: what is added to the time of day, and
// to the clock since the start of the computer. It is read anew whenever the clock is; without it nothing is shifted. Dates
// of files move with the time of day, so that a file written a moment ago is a moment old. Works under the sanitizers.
#define _GNU_SOURCE
#include <fcntl.h>
#include <math.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

struct shift {
    double wall, uptime;
};

static struct shift present(void) {
    struct shift shift = {0, 0};
    const char *name = getenv("CLOCK_SHIFT");
    const int file = name == NULL ? -1 : (int)syscall(SYS_openat, AT_FDCWD, name, O_RDONLY | O_CLOEXEC);
    if (file < 0) return shift;
    char text[100];
    const long count = syscall(SYS_read, file, text, sizeof text - 1);
    syscall(SYS_close, file);
    if (count <= 0) return shift;
    text[count] = 0;
    char *rest = text;
    shift.wall = strtod(rest, &rest);
    shift.uptime = strtod(rest, &rest);
    return shift;
}

static void move(struct timespec *time, double seconds) {
    const double whole = floor(seconds);
    time->tv_sec += (time_t)whole;
    time->tv_nsec += (long)((seconds - whole) * 1e9);
    if (time->tv_nsec >= 1000000000) {
        time->tv_nsec -= 1000000000;
        ++time->tv_sec;
    }
}

int clock_gettime(clockid_t clock, struct timespec *time) {
    const int result = (int)syscall(SYS_clock_gettime, clock, time);
    if (result != 0) return result;
    if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) move(time, present().wall);
    if (clock == CLOCK_MONOTONIC || clock == CLOCK_MONOTONIC_COARSE || clock == CLOCK_BOOTTIME)
        move(time, present().uptime);
    return 0;
}

int gettimeofday(struct timeval *restrict day, void *restrict zone) {
    (void)zone;
    struct timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    day->tv_sec = time.tv_sec;
    day->tv_usec = time.tv_nsec / 1000;
    return 0;
}

time_t time(time_t *out) {
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    if (out != NULL) *out = now.tv_sec;
    return now.tv_sec;
}

static int moved(int result, struct stat *status) {
    if (result == 0) move(&status->st_mtim, present().wall);
    return result;
}

int stat(const char *restrict name, struct stat *restrict status) {
    return moved((int)syscall(SYS_newfstatat, AT_FDCWD, name, status, 0), status);
}

int lstat(const char *restrict name, struct stat *restrict status) {
    return moved((int)syscall(SYS_newfstatat, AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW), status);
}

int fstat(int file, struct stat *status) {
    return moved((int)syscall(SYS_newfstatat, file, "", status, AT_EMPTY_PATH), status);
}
