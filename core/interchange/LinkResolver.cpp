#include "core/interchange/LinkResolver.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

namespace {

using State = LinkStatus::State;

// Schemes a page links to that a browser hands to another program, or that need more
// than an HTTP request: kept, listed, never checked.
const QSet<QString>& OtherSchemes()
{
    static const QSet<QString> schemes{
        QStringLiteral("mailto"), QStringLiteral("tel"),      QStringLiteral("sms"),
        QStringLiteral("callto"), QStringLiteral("fax"),      QStringLiteral("javascript"),
        QStringLiteral("data"),   QStringLiteral("ftp"),      QStringLiteral("ftps"),
        QStringLiteral("sftp"),   QStringLiteral("ssh"),      QStringLiteral("telnet"),
        QStringLiteral("news"),   QStringLiteral("nntp"),     QStringLiteral("snews"),
        QStringLiteral("irc"),    QStringLiteral("ircs"),     QStringLiteral("xmpp"),
        QStringLiteral("sip"),    QStringLiteral("sips"),     QStringLiteral("skype"),
        QStringLiteral("geo"),    QStringLiteral("webcal"),   QStringLiteral("magnet"),
        QStringLiteral("git"),    QStringLiteral("svn"),      QStringLiteral("urn"),
        QStringLiteral("about"),  QStringLiteral("blob"),     QStringLiteral("facetime"),
        QStringLiteral("maps"),   QStringLiteral("market"),   QStringLiteral("ws"),
        QStringLiteral("wss"),    QStringLiteral("gopher"),   QStringLiteral("ldap"),
        QStringLiteral("rtsp"),   QStringLiteral("mms"),      QStringLiteral("bitcoin"),
        QStringLiteral("vnc"),    QStringLiteral("whatsapp"), QStringLiteral("spotify"),
        QStringLiteral("steam"),  QStringLiteral("matrix"),   QStringLiteral("view-source"),
    };
    return schemes;
}

// The scheme written at the start of Text, lower-cased; empty for a relative link.
QString SchemeOf(const QString& Text)
{
    static const QRegularExpression scheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):"));
    const QRegularExpressionMatch match = scheme.match(Text);
    return match.hasMatch() ? match.captured(1).toLower() : QString();
}

bool HasWhitespace(const QString& Text)
{
    for (const QChar c : Text) {
        if (c.isSpace())
            return true;
    }
    return false;
}

// Why QUrl refused Url, in the user's words.
QString Problem(const QUrl& Url)
{
    const QString error = Url.errorString();
    if (error.contains(QLatin1String("port"), Qt::CaseInsensitive))
        return QStringLiteral("bad port");
    if (error.contains(QLatin1String("host"), Qt::CaseInsensitive))
        return QStringLiteral("bad host name");
    return QStringLiteral("not a valid address");
}

ResolvedLink Settled(ResolvedLink::Kind Kind, const QUrl& Url, State TheState,
                     const QString& Detail = QString())
{
    ResolvedLink link;
    link.kind = Kind;
    link.url = Url;
    link.status.state = TheState;
    link.status.detail = Detail;
    return link;
}

ResolvedLink Malformed(const QString& Why)
{
    return Settled(ResolvedLink::Kind::Malformed, QUrl(), State::Malformed, Why);
}

// A drive path ("C:\web\a.htm") is a file, not an address of scheme "c".
QUrl WindowsPathUrl(const QString& Text)
{
    QString path = Text;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QUrl::fromLocalFile(path);
}

// Judges an absolute URL by its scheme.
ResolvedLink Classify(const QUrl& Url)
{
    const QString scheme = Url.scheme().toLower();
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https")) {
        if (!Url.isValid())
            return Malformed(Problem(Url));
        if (Url.host().isEmpty())
            return Malformed(QStringLiteral("no host name"));
        return Settled(ResolvedLink::Kind::Web, Url, State::Unchecked);
    }
    if (scheme == QLatin1String("file")) {
        if (!Url.isValid())
            return Malformed(Problem(Url));
        // A file on another machine cannot be looked at from here.
        if (!Url.host().isEmpty() && Url.host() != QLatin1String("localhost"))
            return Settled(ResolvedLink::Kind::Other, Url, State::NotChecked,
                           QStringLiteral("file on %1").arg(Url.host()));
        return Settled(ResolvedLink::Kind::File, Url, State::Unchecked);
    }
    if (OtherSchemes().contains(scheme))
        return Settled(ResolvedLink::Kind::Other, Url, State::NotChecked, scheme);
    return Malformed(QStringLiteral("unknown scheme \"%1\"").arg(Url.scheme()));
}

// A base is a web address with a host, a local folder, or an address of some other
// scheme; anything else would only produce nonsense.
bool UsableBase(const QUrl& Base)
{
    const QString scheme = Base.scheme().toLower();
    if (!Base.isValid() || scheme.isEmpty())
        return false;
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        return !Base.host().isEmpty();
    if (scheme == QLatin1String("file"))
        return Base.path().startsWith(QLatin1Char('/'));
    return true;
}

} // namespace

QString ResolvedLink::Address() const
{
    return url.isEmpty() ? QString() : url.toString();
}

LinkResolver::LinkResolver(const QString& BaseURL, const QString& PictureFolder)
{
    const QString base = BaseURL.trimmed();
    if (base.isEmpty()) {
        if (!PictureFolder.isEmpty()) {
            QString folder = PictureFolder;
            folder.replace(QLatin1Char('\\'), QLatin1Char('/'));
            if (!folder.endsWith(QLatin1Char('/')))
                folder += QLatin1Char('/');
            m_base = QUrl::fromLocalFile(folder);
        }
        return;
    }
    const QString scheme = SchemeOf(base);
    if (scheme.size() > 1)
        m_base = QUrl(base);
    else if (scheme.size() == 1 || base.startsWith(QLatin1Char('\\')))
        m_base = WindowsPathUrl(base);
    else if (base.startsWith(QLatin1Char('/')))
        m_base = QUrl::fromLocalFile(base);
    else
        m_base = QUrl::fromUserInput(base); // "www.site.org/": what the address bar does
    if (HasWhitespace(base) || !UsableBase(m_base))
        m_baseProblem = QStringLiteral("bad base URL");
}

ResolvedLink LinkResolver::Resolve(const QString& Link) const
{
    // A browser drops the blanks around an attribute's address.
    const QString text = Link.trimmed();
    if (text.isEmpty())
        return Settled(ResolvedLink::Kind::Empty, QUrl(), State::NoAddress);

    const QString scheme = SchemeOf(text);
    if (scheme.size() == 1)
        return Classify(WindowsPathUrl(text));
    if (!scheme.isEmpty()) {
        const QUrl url(text);
        if (OtherSchemes().contains(scheme))
            return Settled(ResolvedLink::Kind::Other, url, State::NotChecked, scheme);
        if (HasWhitespace(text))
            return Malformed(QStringLiteral("space in address"));
        return Classify(url);
    }

    if (HasWhitespace(text))
        return Malformed(QStringLiteral("space in address"));
    if (!m_baseProblem.isEmpty())
        return Malformed(m_baseProblem);
    if (m_base.isEmpty())
        return Settled(ResolvedLink::Kind::Other, QUrl(), State::NotChecked,
                       QStringLiteral("relative, no base URL"));
    const QUrl relative(text);
    if (!relative.isValid())
        return Malformed(Problem(relative));
    return Classify(m_base.resolved(relative));
}
