// SPDX-License-Identifier: MIT
// What a launcher run costs at the least: the two children it starts, by bare system calls, one after the other.
#include <spawn.h>
#include <stddef.h>
#include <sys/wait.h>

extern char **environ;

static void run(char *const arguments[])
{
    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, arguments[0], NULL, NULL, arguments, environ) == 0)
        waitpid(child, &status, 0);
}

int main(void)
{
    run((char *const[]){"hostname", NULL});
    run((char *const[]){"true", "", NULL});
    return 0;
}
