#pragma once
#include "strclass.h"

inline constexpr DWORD SYSLOG_ERROR = 1;
inline constexpr DWORD SYSLOG_WARN = 2;
inline constexpr DWORD SYSLOG_INFO = 4;
inline constexpr DWORD SYSLOG_DEBUG = 8;
inline constexpr BOOL NO_DIALOG = FALSE;
inline constexpr BOOL DISPLAY_DIALOG = TRUE;

/// The host's system log; printf-style text.
class LogSys {
  public:
    virtual ~LogSys() = default;
    virtual void LogEntry(DWORD type, BOOL dialog, const MCHAR* title, const MCHAR* format,
                          ...) = 0;
};
