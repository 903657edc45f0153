#include "cli/MapJson.h"

#include "core/document/MapDocument.h"

#include <QLocale>
#include <QString>
#include <QStringList>

namespace {

// Writes one object at a time with its keys in the order given.
class JsonText
{
public:
    void Open(QChar bracket)
    {
        m_text += bracket;
        ++m_depth;
        m_first = true;
    }
    void Close(QChar bracket)
    {
        --m_depth;
        NewLine();
        m_text += bracket;
        m_first = false;
    }
    void Key(const char* key)
    {
        Next();
        m_text += QLatin1Char('"') + QLatin1String(key) + QLatin1String("\": ");
    }
    // Starts a nested value that is an element of an array.
    void Element() { Next(); }
    void String(const QString& value)
    {
        m_text += QLatin1Char('"');
        for (const QChar c : value) {
            switch (c.unicode()) {
            case '"':
                m_text += QLatin1String("\\\"");
                break;
            case '\\':
                m_text += QLatin1String("\\\\");
                break;
            case '\n':
                m_text += QLatin1String("\\n");
                break;
            case '\r':
                m_text += QLatin1String("\\r");
                break;
            case '\t':
                m_text += QLatin1String("\\t");
                break;
            default:
                if (c.unicode() < 0x20)
                    m_text += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
                else
                    m_text += c;
            }
        }
        m_text += QLatin1Char('"');
    }
    void Integer(qint64 value) { m_text += QString::number(value); }
    void Double(double value)
    {
        QString digits = QString::number(value, 'g', QLocale::FloatingPointShortest);
        if (!digits.contains(QLatin1Char('.')) && !digits.contains(QLatin1Char('e')))
            digits += QLatin1String(".0");
        m_text += digits;
    }
    void Boolean(bool value) { m_text += value ? QLatin1String("true") : QLatin1String("false"); }
    // Raw text for short arrays that stay on one line.
    void Raw(const QString& text) { m_text += text; }

    QByteArray Utf8() const { return (m_text + QLatin1Char('\n')).toUtf8(); }

private:
    void Next()
    {
        if (!m_first)
            m_text += QLatin1Char(',');
        m_first = false;
        NewLine();
    }
    void NewLine()
    {
        m_text += QLatin1Char('\n');
        m_text += QString(m_depth * 4, QLatin1Char(' '));
    }

    QString m_text;
    int m_depth = 0;
    bool m_first = true;
};

QString PointsText(const std::vector<ShapePoint>& points)
{
    QStringList pairs;
    for (const ShapePoint& p : points)
        pairs << QStringLiteral("[%1, %2]").arg(p.x).arg(p.y);
    return QLatin1Char('[') + pairs.join(QLatin1String(", ")) + QLatin1Char(']');
}

QString OrderText(const std::vector<std::int16_t>& order)
{
    QStringList entries;
    for (std::int16_t entry : order)
        entries << QString::number(entry);
    return QLatin1Char('[') + entries.join(QLatin1String(", ")) + QLatin1Char(']');
}

void Shape(JsonText& json, const PatShape& shape)
{
    json.Open(QLatin1Char('{'));
    json.Key("ShapeType");
    json.Integer(shape.GetShapeType());
    json.Key("Points");
    json.Raw(PointsText(shape.Points()));
    json.Key("URL");
    json.String(shape.URL);
    json.Key("Comment");
    json.String(shape.Comment);
    json.Key("Target");
    json.String(shape.Target);
    json.Key("StatusString");
    json.String(shape.StatusString);
    json.Key("AlertBox");
    json.Integer(shape.AlertBox);
    json.Key("AlertString");
    json.String(shape.AlertString);
    json.Key("ShapeColor");
    json.Integer(shape.ShapeColor);
    json.Key("ShapeBuildingFinished");
    json.Boolean(shape.ShapeBuildingFinished);
    json.Close(QLatin1Char('}'));
}

} // namespace

QByteArray MapJson::Dump(const MapDocument& Document)
{
    JsonText json;
    const auto string = [&](const char* key, const QString& value) {
        json.Key(key);
        json.String(value);
    };
    const auto integer = [&](const char* key, qint64 value) {
        json.Key(key);
        json.Integer(value);
    };
    const auto real = [&](const char* key, double value) {
        json.Key(key);
        json.Double(value);
    };
    const auto boolean = [&](const char* key, bool value) {
        json.Key(key);
        json.Boolean(value);
    };

    json.Open(QLatin1Char('{'));
    string("MapName", Document.MapName);
    integer("MapStyle", Document.MapStyle);
    integer("MapOnClick", Document.MapOnClick);
    integer("MapBorder", Document.MapBorder);
    string("ImagePath", Document.ImagePath);
    string("ImageName", Document.ImageName);
    integer("RealWidth", Document.RealWidth);
    integer("RealHeight", Document.RealHeight);
    integer("SWidth", Document.SWidth);
    integer("SHeight", Document.SHeight);
    real("ZoomLevel", Document.ZoomLevel);
    real("GridSpacing", Document.GridSpacing);
    integer("GridColor", Document.GridColor);
    integer("GridStyle", Document.GridStyle);
    integer("GridColorNum", Document.GridColorNum);
    boolean("ShouldDrawGrid", Document.ShouldDrawGrid);
    boolean("GridSnap", Document.GridSnap);
    integer("FocusColor", Document.FocusColor);
    integer("NonFocusColor", Document.NonFocusColor);
    integer("BorderColor", Document.BorderColor);
    json.Key("ShapeOrder");
    json.Raw(OrderText(Document.ShapeOrder()));
    json.Key("Shapes");
    json.Open(QLatin1Char('['));
    for (const PatShape& shape : Document.Shapes()) {
        json.Element();
        Shape(json, shape);
    }
    json.Close(QLatin1Char(']'));
    string("DefURL", Document.DefURL);
    string("DefComment", Document.DefComment);
    string("DefTarget", Document.DefTarget);
    string("DefStatus", Document.DefStatus);
    integer("DefAlertVal", Document.DefAlertVal);
    string("DefAlert", Document.DefAlert);
    json.Close(QLatin1Char('}'));
    return json.Utf8();
}
