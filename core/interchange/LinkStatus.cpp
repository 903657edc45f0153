#include "core/interchange/LinkStatus.h"

QString LinkStatus::Text() const
{
    switch (state) {
    case State::Unchecked:
        return QString();
    case State::Checking:
        return QStringLiteral("Checking…");
    case State::Ok:
        return code > 0 ? QStringLiteral("OK %1").arg(code) : QStringLiteral("OK (file)");
    case State::Moved:
        return QStringLiteral("Moved → ") + detail;
    case State::Broken:
        return QStringLiteral("Broken %1").arg(code);
    case State::ServerError:
        return QStringLiteral("Server error %1").arg(code);
    case State::Unreachable:
        return QStringLiteral("Unreachable: ") + detail;
    case State::TimedOut:
        return QStringLiteral("Timed out");
    case State::RedirectLoop:
        return QStringLiteral("Redirect loop");
    case State::FileMissing:
        return QStringLiteral("File missing");
    case State::NotChecked:
        return QStringLiteral("Not checked (%1)").arg(detail);
    case State::Malformed:
        return QStringLiteral("Malformed: ") + detail;
    case State::NoAddress:
        return QStringLiteral("No address");
    }
    return QString();
}

bool LinkStatus::IsBroken() const
{
    switch (state) {
    case State::Broken:
    case State::ServerError:
    case State::Unreachable:
    case State::TimedOut:
    case State::RedirectLoop:
    case State::FileMissing:
    case State::Malformed:
        return true;
    default:
        return false;
    }
}

QString LinkStatus::Word() const
{
    switch (state) {
    case State::Unchecked:
        return QStringLiteral("unchecked");
    case State::Checking:
        return QStringLiteral("checking");
    case State::Ok:
        return QStringLiteral("ok");
    case State::Moved:
        return QStringLiteral("moved");
    case State::Broken:
        return QStringLiteral("broken");
    case State::ServerError:
        return QStringLiteral("server-error");
    case State::Unreachable:
        return QStringLiteral("unreachable");
    case State::TimedOut:
        return QStringLiteral("timed-out");
    case State::RedirectLoop:
        return QStringLiteral("redirect-loop");
    case State::FileMissing:
        return QStringLiteral("file-missing");
    case State::NotChecked:
        return QStringLiteral("not-checked");
    case State::Malformed:
        return QStringLiteral("malformed");
    case State::NoAddress:
        return QStringLiteral("no-address");
    }
    return QString();
}
