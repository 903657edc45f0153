#include "core/interchange/FormattedMapCode.h"

#include "core/interchange/Html5MapWriter.h"
#include "core/interchange/MapWalk.h"
#include "core/interchange/SvgMapWriter.h"
#include "core/interchange/TestPage.h"

FormattedMapCode FormattedMapCode::Generate(MapDocument& Document, MapFormat Format,
                                            MapCodeGenerator::Form TheForm)
{
    FormattedMapCode code;
    switch (Format) {
    case MapFormat::Classic:
        code.Body = MapCodeGenerator::GenerateMapCode(Document, TheForm);
        code.Text = code.Body;
        break;
    case MapFormat::Html5: {
        Html5MapWriter writer(TheForm);
        if (MapWalk::Walk(Document, writer)) {
            code.Head = writer.Head();
            code.Body = writer.Body();
            code.Text = writer.Text();
        }
        break;
    }
    case MapFormat::Svg: {
        SvgMapWriter writer(TheForm);
        if (MapWalk::Walk(Document, writer)) {
            code.Body = writer.Text();
            code.Text = code.Body;
        }
        break;
    }
    }
    return code;
}

QString FormattedMapCode::TestPageText(MapFormat Format) const
{
    if (Format == MapFormat::Classic)
        return TestPage::Text(Body);
    return TestPage::Html5Text(Head, Body);
}
