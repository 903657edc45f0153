#include "FuzzChecks.h"
#include "core/interchange/LinkChecker.h"
#include "core/interchange/LinkResolver.h"

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>

// Bytes read as "base URL" LF "link": whatever is typed, the link resolves to something
// that says what it is, an absolute link never depends on the base, and the fragment
// never changes what the checker is asked.

using FuzzChecks::Expect;
using Kind = ResolvedLink::Kind;

namespace {

void CheckConsistent(const ResolvedLink& Link, const QString& Text)
{
    const QString scheme = Link.url.scheme().toLower();
    Expect(Link.NeedsCheck() == (Link.status.state == LinkStatus::State::Unchecked),
           QStringLiteral("\"%1\": checked state and kind disagree").arg(Text));
    Expect(Link.status.state == LinkStatus::State::Unchecked || !Link.status.Text().isEmpty(),
           QStringLiteral("\"%1\": a settled status without text").arg(Text));
    switch (Link.kind) {
    case Kind::Web:
        Expect(Link.url.isValid() && !Link.url.host().isEmpty() &&
                   (scheme == QLatin1String("http") || scheme == QLatin1String("https")),
               QStringLiteral("\"%1\": web address %2").arg(Text, Link.url.toString()));
        break;
    case Kind::File:
        Expect(Link.url.isValid() && Link.url.isLocalFile(),
               QStringLiteral("\"%1\": file address %2").arg(Text, Link.url.toString()));
        break;
    case Kind::Malformed:
        Expect(Link.url.isEmpty() && Link.status.IsBroken(),
               QStringLiteral("\"%1\": malformed but %2").arg(Text, Link.url.toString()));
        break;
    case Kind::Empty:
        Expect(Text.trimmed().isEmpty(), QStringLiteral("\"%1\" counted as empty").arg(Text));
        break;
    case Kind::Other:
        break;
    }
    if (Link.NeedsCheck()) {
        // Rows that differ in their fragment alone share one check.
        QUrl elsewhere = Link.url;
        elsewhere.setFragment(QStringLiteral("elsewhere"));
        Expect(LinkChecker::Key(Link.url) == LinkChecker::Key(elsewhere),
               QStringLiteral("\"%1\": the fragment changes the key").arg(Text));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype split = bytes.indexOf('\n');
    const QString base = split < 0 ? QString() : QString::fromUtf8(bytes.left(split));
    const QString text = QString::fromUtf8(split < 0 ? bytes : bytes.mid(split + 1));

    const ResolvedLink link = LinkResolver(base, QStringLiteral("/srv/maps/")).Resolve(text);
    CheckConsistent(link, text);
    // An absolute address is what it is, whatever the base.
    const ResolvedLink alone = LinkResolver(QString(), QString()).Resolve(text);
    if (alone.kind == Kind::Web || alone.kind == Kind::File)
        Expect(link.kind == alone.kind && link.url == alone.url,
               QStringLiteral("\"%1\" depends on the base \"%2\"").arg(text, base));
    return 0;
}
