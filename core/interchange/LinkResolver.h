#pragma once

#include "core/interchange/LinkStatus.h"

#include <QString>
#include <QUrl>

// One link as a browser would follow it.
struct ResolvedLink
{
    enum class Kind {
        Web,       // http or https: checked over the network
        File,      // a local file: checked on disk
        Other,     // a scheme that is kept but cannot be checked (mailto, tel, ftp...)
        Malformed, // unusable as written
        Empty,     // nothing typed
    };

    Kind kind = Kind::Empty;
    QUrl url;          // where a browser goes; empty when there is nowhere to go
    LinkStatus status; // Unchecked for Web and File, already settled for the rest

    bool NeedsCheck() const { return kind == Kind::Web || kind == Kind::File; }
    // The address as a user reads it: the URL, or the text itself when it is malformed.
    QString Address() const;
};

// Resolves links the way a browser resolves them in a page at the base URL: an absolute
// address of any scheme stays as it is, a relative one is resolved against the base
// (so "../a.html" and "/a.html" work). Without a base URL, relative links are files
// next to the map's picture.
class LinkResolver
{
public:
    // BaseURL as the user typed it: an address, "www.site.org/", or a local folder.
    LinkResolver(const QString& BaseURL, const QString& PictureFolder);

    ResolvedLink Resolve(const QString& Link) const;
    // The base relative links are resolved against; empty when there is none.
    const QUrl& Base() const { return m_base; }

private:
    QUrl m_base;
    QString m_baseProblem; // why the typed base cannot be used, when it cannot
};
