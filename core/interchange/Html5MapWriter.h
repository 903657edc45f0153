#pragma once

#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapWriter.h"

#include <QString>

struct MapArea;

// Valid HTML5: every value quoted and escaped, alt texts, the picture's size, status
// texts as titles, alerts as onclick handlers, and the effects as CSS that browsers of
// today run. Head() is a <style> block for the page's head (empty without effects);
// Body() is the map and its picture.
class Html5MapWriter : public MapWriter
{
public:
    explicit Html5MapWriter(MapCodeGenerator::Form TheForm);

    void BeginMap(const MapDocument& Document) override;
    void WriteShape(int Index, PatShape& Shape) override;
    void WriteDefaultArea(const MapDocument& Document) override;
    void EndMap(const MapDocument& Document) override;

    const QString& Head() const { return m_head; }
    const QString& Body() const { return m_body; }
    // The code window's text: a comment on where the style block goes, the block, the body.
    QString Text() const;

    // The attributes an area's link, texts and alert give, each with a leading blank.
    static QString LinkAttributes(const MapArea& Area);
    static void AppendLinkAttributes(QString& Out, const MapArea& Area);

private:
    void WriteArea(const MapArea& Area);

    MapCodeGenerator::Form m_form;
    QString m_head;
    QString m_body;
};
