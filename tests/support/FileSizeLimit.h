#pragma once

#include <csignal>
#include <sys/resource.h>

// While alive, writes past Bytes into any file fail as on a full disk (EFBIG, no signal).
// Works for root too, unlike read-only folders.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t Bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        rlimit limited{Bytes, m_old.rlim_max};
        m_active = setrlimit(RLIMIT_FSIZE, &limited) == 0;
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    bool Active() const { return m_active; }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
    bool m_active = false;
};
