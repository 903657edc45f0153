#include "core/interchange/HtmlText.h"

#include <algorithm>
#include <charconv>

QString HtmlText::Attribute(const QString& Text)
{
    QString out;
    out.reserve(Text.size() + 8);
    AppendAttribute(out, Text);
    return out;
}

void HtmlText::AppendNamed(QString& Out, QLatin1String Name, QStringView Value)
{
    Out += QLatin1Char(' ');
    Out += Name;
    Out += QLatin1String("=\"");
    AppendAttribute(Out, Value);
    Out += QLatin1Char('"');
}

void HtmlText::AppendNumber(QString& Out, long long Value)
{
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, Value);
    Out += QLatin1String(digits, result.ptr - digits);
}

void HtmlText::AppendAttribute(QString& out, QStringView Text)
{
    // Control characters and the two non-characters cannot appear in XML at all, not even
    // as references, so the SVG block would no longer parse: they become U+FFFD.
    const auto unwritable = [](char16_t u) {
        return (u < 0x20 && u != u'\t' && u != u'\n' && u != u'\r') || u == 0xFFFE || u == 0xFFFF;
    };
    const auto special = [&unwritable](QChar c) {
        const char16_t u = c.unicode();
        return u == u'&' || u == u'"' || u == u'<' || u == u'>' || u == u'\r' || unwritable(u);
    };
    if (std::none_of(Text.begin(), Text.end(), special)) {
        out += Text;
        return;
    }
    for (QChar c : Text) {
        switch (c.unicode()) {
        case u'&':
            out += QLatin1String("&amp;");
            break;
        case u'"':
            out += QLatin1String("&quot;");
            break;
        case u'<':
            out += QLatin1String("&lt;");
            break;
        case u'>':
            out += QLatin1String("&gt;");
            break;
        case u'\r':
            // A parser turns a bare carriage return into a line feed; keep it as typed.
            out += QLatin1String("&#13;");
            break;
        default:
            out += unwritable(c.unicode()) ? QChar(QChar::ReplacementCharacter) : c;
        }
    }
}

QString HtmlText::JsString(const QString& Text)
{
    QString out = QStringLiteral("'");
    for (QChar c : Text) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'\'') {
            out += QLatin1Char('\\');
            out += c;
        } else if (u == u'\n') {
            out += QLatin1String("\\n");
        } else if (u == u'\r') {
            out += QLatin1String("\\r");
        } else if (u < 0x20 || u == 0x7F || u == 0x2028 || u == 0x2029) {
            // Line separators end a JavaScript string; control characters upset tidy.
            out += QStringLiteral("\\u%1").arg(static_cast<int>(u), 4, 16, QLatin1Char('0'));
        } else {
            out += c;
        }
    }
    out += QLatin1Char('\'');
    return out;
}

bool HtmlText::ReadJsString(const QString& Source, qsizetype From, QString& Text, qsizetype& End)
{
    if (From >= Source.size())
        return false;
    const QChar quote = Source[From];
    if (quote != QLatin1Char('\'') && quote != QLatin1Char('"'))
        return false;
    QString text;
    for (qsizetype i = From + 1; i < Source.size(); ++i) {
        const QChar c = Source[i];
        if (c == quote) {
            // As an HTML parser does with a NUL; lone surrogates become U+FFFD on the way
            // through UTF-8. Either would not survive the page anyway.
            text.replace(QChar(0), QChar(0xFFFD));
            Text = QString::fromUtf8(text.toUtf8());
            End = i + 1;
            return true;
        }
        if (c != QLatin1Char('\\')) {
            text += c;
            continue;
        }
        if (++i >= Source.size())
            return false;
        const char16_t e = Source[i].unicode();
        switch (e) {
        case u'n':
            text += QLatin1Char('\n');
            break;
        case u'r':
            text += QLatin1Char('\r');
            break;
        case u't':
            text += QLatin1Char('\t');
            break;
        case u'u': {
            bool ok = false;
            const ushort code = i + 4 < Source.size() ? Source.mid(i + 1, 4).toUShort(&ok, 16) : 0;
            if (!ok)
                return false;
            text += QChar(code);
            i += 4;
            break;
        }
        default:
            text += Source[i]; // \\ \' \" and any other escaped character stand for themselves
        }
    }
    return false;
}

QString HtmlText::Html5MapName(const QString& MapName)
{
    QString name;
    bool blank = false;
    for (QChar c : MapName.trimmed()) {
        if (c.isSpace()) {
            blank = true;
            continue;
        }
        if (blank)
            name += QLatin1Char('_');
        blank = false;
        name += c;
    }
    return name.isEmpty() ? QStringLiteral("map") : name;
}

QString HtmlText::ClassName(const QString& MapName)
{
    QString name = QStringLiteral("map-");
    for (QChar c : MapName) {
        const bool plain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                           c == QLatin1Char('-') || c == QLatin1Char('_');
        name += plain ? c : QLatin1Char('_');
    }
    return name;
}
