#include "core/interchange/RecoveryOffer.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <utility>

RecoveryOffer::RecoveryOffer(RecoveryStore& Store) : m_store(Store)
{
    for (RecoveryStore::Found& map : m_store.Scan()) {
        if (map.ok) {
            m_maps.push_back(std::move(map));
            continue;
        }
        m_problems.append(QStringLiteral("\"%1\" (last changed %2) cannot be recovered: %3 It "
                                         "was kept as \"%4\".")
                              .arg(map.caption, ChangedText(map),
                                   map.messages.join(QLatin1Char(' ')),
                                   QDir::toNativeSeparators(map.keptAs)));
    }
}

RecoveryOffer::~RecoveryOffer()
{
    m_store.Release();
}

QString RecoveryOffer::PictureText(const RecoveryStore::Found& Map)
{
    return QFileInfo(Map.document.ImageName.isEmpty() ? Map.picture : Map.document.ImageName)
        .fileName();
}

QString RecoveryOffer::ChangedText(const RecoveryStore::Found& Map)
{
    return QLocale().toString(Map.changed, QLocale::ShortFormat);
}

void RecoveryOffer::Recover(int Row)
{
    if (Row < 0 || Row >= Count())
        return;
    m_recovered.push_back(std::move(m_maps[std::size_t(Row)]));
    m_maps.erase(m_maps.begin() + Row);
}

void RecoveryOffer::Discard(int Row)
{
    if (Row < 0 || Row >= Count())
        return;
    m_store.Remove(m_maps[std::size_t(Row)]);
    m_maps.erase(m_maps.begin() + Row);
}

std::vector<RecoveryStore::Found> RecoveryOffer::TakeRecovered()
{
    return std::exchange(m_recovered, {});
}

void RecoveryOffer::Adopted(const RecoveryStore::Found& Map)
{
    m_store.Remove(Map);
}
