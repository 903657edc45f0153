#include "core/forms/OptionsModel.h"

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"

#include <cstdlib>

bool OptionsModel::Record::operator==(const Record& other) const
{
    return URL == other.URL && Comment == other.Comment && Target == other.Target &&
           Status == other.Status && Alert == other.Alert && AlertVal == other.AlertVal;
}

const QStringList& OptionsModel::MapStyleNames()
{
    static const QStringList names{QStringLiteral("Normal"),
                                   QStringLiteral("Colorize On Mouse Over"),
                                   QStringLiteral("Strengthen On Mouse Over"),
                                   QStringLiteral("Un-Blur On Mouse Over"),
                                   QStringLiteral("Un-Invert On Mouse Over"),
                                   QStringLiteral("Un-XRay On Mouse Over")};
    return names;
}

const QStringList& OptionsModel::OnClickNames()
{
    static const QStringList names{
        QStringLiteral("Normal"),          QStringLiteral("Make Gray On Click"),
        QStringLiteral("Weaken On Click"), QStringLiteral("Blur On Click"),
        QStringLiteral("Invert Click"),    QStringLiteral("XRay On Click")};
    return names;
}

const QStringList& OptionsModel::BorderNames()
{
    static const QStringList names{QStringLiteral("Normal"), QStringLiteral("Shadow"),
                                   QStringLiteral("Glow")};
    return names;
}

const QString OptionsModel::HelpText = QStringLiteral(
    "This area allows you to set the different properties of the shapes.  Like what URLs "
    "they will go to when they are clicked.  Note that when you change tabs, the "
    "highlighted shape on the main form will become the shape you are editing.  Also, the "
    "\"Map Style,\" \"On Click,\" and \"Border\" properties of the map only apply to "
    "Internet Explorer 4.0 (and up) web browsers.  Other web browsers (as of this date) "
    "will not be able to see the benefits of these effects.  They should ignore the "
    "effects without error, but it's best to test on the browser you have if you have any "
    "doubts.");

const QString OptionsModel::CloseQuestion =
    QStringLiteral("Are you sure you want to close without saving?");

OptionsModel::OptionsModel(MapDocument& Document, std::function<void(std::int16_t)> Restack)
    : m_document(Document), m_restack(std::move(Restack))
{
}

int OptionsModel::TabCount() const
{
    return m_document.ItemCount() + 3;
}

QString OptionsModel::TabCaption(int Tab) const
{
    if (Tab == 1)
        return QStringLiteral("Map Properties");
    if (IsDefaultAreaTab(Tab))
        return QStringLiteral("Default Area");
    return QStringLiteral("Shape #") + QString::number(Tab - 1);
}

void OptionsModel::LoadMapFields()
{
    MapName = m_document.MapName;
    MapStyle = m_document.MapStyle;
    MapOnClick = m_document.MapOnClick;
    MapBorder = m_document.MapBorder;
}

void OptionsModel::LoadUpArray()
{
    const int last = TabCount() - 2;
    std::vector<Record> records(static_cast<std::size_t>(last) + 1);
    for (int k = 0; k < last; ++k) {
        const auto index = static_cast<std::int16_t>(k);
        records[k] = {m_document.GetURL(index),    m_document.GetComment(index),
                      m_document.GetTarget(index), m_document.GetStatus(index),
                      m_document.GetAlert(index),  m_document.GetAlertVal(index)};
    }
    records[last] = {m_document.DefURL,    m_document.DefComment, m_document.DefTarget,
                     m_document.DefStatus, m_document.DefAlert,   m_document.DefAlertVal};
    m_loaded = records;
    m_records = std::move(records);
}

void OptionsModel::ShowTab(int Tab)
{
    m_loadingTab = Tab;
    if (m_showPage)
        m_showPage(Tab);
    if (IsShapeTab(Tab) && m_restack)
        m_restack(static_cast<std::int16_t>(Tab - 2));
}

void OptionsModel::SelectTab(int Tab)
{
    if (Tab == m_shownTab)
        return;
    ShowTab(Tab);
    m_shownTab = Tab;
}

void OptionsModel::SetTabInfo(int Tab)
{
    ShowTab(Tab);
}

const OptionsModel::Record& OptionsModel::RecordOfTab(int Tab) const
{
    const int k = Tab - 2;
    if (k < 0 || k >= static_cast<int>(m_records.size()))
        throw IndexOutOfRangeError();
    return m_records[static_cast<std::size_t>(k)];
}

void OptionsModel::EditText(Field TheField, const QString& Text)
{
    // Page filling happens while LoadingTab is already the new tab: not an edit.
    if (m_loadingTab != m_shownTab || m_shownTab < 2 ||
        m_shownTab - 2 >= static_cast<int>(m_records.size()))
        return;
    Record& record = m_records[static_cast<std::size_t>(m_shownTab - 2)];
    switch (TheField) {
    case Field::URL:
        record.URL = Text;
        break;
    case Field::Comment:
        record.Comment = Text;
        break;
    case Field::Target:
        record.Target = Text;
        break;
    case Field::Status:
        record.Status = Text;
        break;
    case Field::Alert:
        record.Alert = Text;
        break;
    }
}

void OptionsModel::ClickAlert(bool Checked)
{
    if (m_loadingTab != m_shownTab || m_shownTab < 2 ||
        m_shownTab - 2 >= static_cast<int>(m_records.size()))
        return;
    m_records[static_cast<std::size_t>(m_shownTab - 2)].AlertVal = Checked ? 1 : 0;
}

void OptionsModel::WriteBack()
{
    const int last = static_cast<int>(m_records.size()) - 1;
    for (int k = 0; k < last; ++k) {
        const auto index = static_cast<std::int16_t>(k);
        const Record& r = m_records[static_cast<std::size_t>(k)];
        if (k < static_cast<int>(m_loaded.size()) && r == m_loaded[static_cast<std::size_t>(k)])
            continue;
        m_document.SetURL(index, r.URL);
        m_document.SetComment(index, r.Comment);
        m_document.SetTarget(index, r.Target);
        m_document.SetStatus(index, r.Status);
        m_document.SetAlert(index, r.Alert);
        m_document.SetAlertVal(index, r.AlertVal);
    }
    if (last >= 0) {
        const Record& def = m_records[static_cast<std::size_t>(last)];
        m_document.DefURL = def.URL;
        m_document.DefComment = def.Comment;
        m_document.DefTarget = def.Target;
        m_document.DefStatus = def.Status;
        m_document.DefAlert = def.Alert;
        m_document.DefAlertVal = def.AlertVal;
    }
    m_document.MapName = MapName;
    m_document.MapStyle = MapStyle;
    m_document.MapOnClick = MapOnClick;
    m_document.MapBorder = MapBorder;
}
