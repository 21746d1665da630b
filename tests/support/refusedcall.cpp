// SPDX-License-Identifier: MIT
#include <support/refusedcall.h>

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <cstddef>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#endif

bool refuseCall(long number, int error, int argument)
{
#ifdef Q_OS_LINUX
    constexpr size_t lowHalf = Q_BYTE_ORDER == Q_BIG_ENDIAN ? 4 : 0;
    const size_t argumentAt = offsetof(seccomp_data, args)
        + (argument < 0 ? 0 : static_cast<size_t>(argument)) * sizeof(quint64) + lowHalf;
    const auto wanted = static_cast<quint32>(number);
    const auto refused = static_cast<quint32>(SECCOMP_RET_ERRNO) | static_cast<quint32>(error);
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<quint32>(offsetof(seccomp_data, nr))),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, wanted, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<quint32>(argumentAt)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, 0, static_cast<quint8>(argument < 0 ? 0 : 1), 0),
        BPF_STMT(BPF_RET | BPF_K, refused),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof steps / sizeof steps[0], steps};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
        && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
#else
    Q_UNUSED(number)
    Q_UNUSED(error)
    Q_UNUSED(argument)
    return false;
#endif
}
