#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <vector>

class MapDocument;

// What the properties dialog edits: a private copy of every shape's link properties, of
// the default area's and of the map's, written back to the document only on OK.
//
// Tabs count from 1: tab 1 is the map, tabs 2..TabCount()-1 the shapes in index order,
// the last tab the default area. Record k belongs to tab k + 2.
class OptionsModel
{
public:
    struct Record
    {
        QString URL;
        QString Comment;
        QString Target;
        QString Status;
        QString Alert;
        std::int16_t AlertVal = 0;
        bool operator==(const Record& other) const;
    };
    enum class Field { URL, Comment, Target, Status, Alert };

    static const QStringList& MapStyleNames();
    static const QStringList& OnClickNames();
    static const QStringList& BorderNames();
    static const QString HelpText;
    static const QString CloseQuestion;

    // Restack brings a shape to the top of the map (and redraws it) while it is edited;
    // the dialog passes the map window's operation, headless callers the document's.
    OptionsModel(MapDocument& Document, std::function<void(std::int16_t)> Restack);

    int TabCount() const;
    QString TabCaption(int Tab) const;
    bool IsShapeTab(int Tab) const { return Tab > 1 && Tab < TabCount(); }
    bool IsDefaultAreaTab(int Tab) const { return Tab == TabCount(); }

    // Reads the map fields from the document.
    void LoadMapFields();
    // Fills the record array from the document.
    void LoadUpArray();

    // Called while a tab's page is filled; edits reported meanwhile are ignored.
    void SetPageFiller(std::function<void(int)> ShowPage) { m_showPage = std::move(ShowPage); }
    // A click on tab Tab: nothing when it is already on show; otherwise shows its page
    // and, for a shape tab, brings that shape to the top of the map.
    void SelectTab(int Tab);
    // Shows the page of Tab without marking it as shown.
    void SetTabInfo(int Tab);
    int ShownTab() const { return m_shownTab; }
    int LoadingTab() const { return m_loadingTab; }

    const std::vector<Record>& Records() const { return m_records; }
    // The record on show for tab Tab (2..TabCount()).
    const Record& RecordOfTab(int Tab) const;

    // User edits on the shown page.
    void EditText(Field TheField, const QString& Text);
    void ClickAlert(bool Checked);
    QString MapName;
    std::int16_t MapStyle = 0;
    std::int16_t MapOnClick = 0;
    std::int16_t MapBorder = 0;

    // OK: the records that differ from what was loaded, the default area and the map
    // fields go back to the document.
    void WriteBack();

private:
    MapDocument& m_document;
    std::function<void(std::int16_t)> m_restack;
    std::function<void(int)> m_showPage;
    std::vector<Record> m_records;
    // As loaded, to write back only what was edited.
    std::vector<Record> m_loaded;
    int m_loadingTab = 0;
    int m_shownTab = 0;

    void ShowTab(int Tab);
};
