#include "core/interchange/RecoveryStore.h"

#include "core/base/Module1.h"
#include "core/interchange/MapFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QRandomGenerator>
#include <QSet>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

namespace {

const QString InfoSuffix = QStringLiteral(".json");
const QString MapSuffix = QStringLiteral(".imp");
const QString LockSuffix = QStringLiteral(".lock");

// A file name's run: "<pid>-<start>" of "<pid>-<start>-<n>.json".
QString SessionOf(const QString& FileName)
{
    const QString base = QFileInfo(FileName).completeBaseName();
    const qsizetype dash = base.lastIndexOf(QLatin1Char('-'));
    return dash <= 0 ? QString() : base.left(dash);
}

std::unique_ptr<QLockFile> LockOf(const QString& Path)
{
    auto lock = std::make_unique<QLockFile>(Path);
    // A run edits for hours: only a dead owner makes a lock stale, never its age.
    lock->setStaleLockTime(0);
    return lock;
}

// Sets a file aside under Path + ".bad", replacing an older one of that name.
QString SetAside(const QString& Path)
{
    if (!QFileInfo::exists(Path))
        return QString();
    const QString bad = Path + QStringLiteral(".bad");
    QFile::remove(bad);
    return QFile::rename(Path, bad) ? bad : Path;
}

// The reader takes shape i's order entry as the position of shape i, so a file written
// with the inverse order reads back as the order itself.
std::vector<std::int16_t> ForReadingBack(const std::vector<std::int16_t>& Order)
{
    std::vector<std::int16_t> inverse(Order.size());
    for (std::size_t i = 0; i < Order.size(); ++i)
        inverse[std::size_t(Order[i])] = static_cast<std::int16_t>(i);
    return inverse;
}

} // namespace

RecoveryStore::RecoveryStore(const QString& Folder, QObject* parent)
    : QObject(parent), m_folder(QDir::cleanPath(Folder)),
      // The random part keeps two stores of one process apart when they start within
      // the same millisecond; the lock of one would otherwise refuse the other.
      m_session(QStringLiteral("%1-%2%3")
                    .arg(QCoreApplication::applicationPid())
                    .arg(QDateTime::currentMSecsSinceEpoch())
                    .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0')))
{
    m_timer.setInterval(DefaultInterval);
    connect(&m_timer, &QTimer::timeout, this, &RecoveryStore::WriteDue);
    connect(&m_writer, &RecoveryWriter::Written, this, &RecoveryStore::WriteDone);
}

RecoveryStore::~RecoveryStore() = default;

QString RecoveryStore::DefaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/recovery");
}

bool RecoveryStore::Start()
{
    m_timer.start();
    if (!QDir().mkpath(m_folder)) {
        Failed(QStringLiteral("The folder cannot be made."));
        return false;
    }
    m_lock = LockOf(m_folder + QLatin1Char('/') + m_session + LockSuffix);
    if (!m_lock->tryLock(0)) {
        m_lock.reset();
        Failed(QStringLiteral("The folder is not writable."));
        return false;
    }
    return true;
}

int RecoveryStore::Track(Source Map)
{
    const int id = m_nextId++;
    Slot& slot = m_slots[id];
    slot.source = std::move(Map);
    slot.base = m_folder + QLatin1Char('/') + m_session + QLatin1Char('-') + QString::number(id);
    return id;
}

void RecoveryStore::MapChanged(int Id)
{
    const auto found = m_slots.find(Id);
    if (found == m_slots.end())
        return;
    found->second.dirty = true;
    found->second.changed = QDateTime::currentDateTime();
}

void RecoveryStore::MapSaved(int Id)
{
    const auto found = m_slots.find(Id);
    if (found == m_slots.end())
        return;
    found->second.dirty = false;
    RemoveFiles(found->second);
}

void RecoveryStore::Forget(int Id)
{
    const auto found = m_slots.find(Id);
    if (found == m_slots.end())
        return;
    RemoveFiles(found->second);
    m_slots.erase(found);
}

void RecoveryStore::Drop(int Id)
{
    m_slots.erase(Id);
}

QString RecoveryStore::FileOf(int Id) const
{
    const auto found = m_slots.find(Id);
    if (found == m_slots.end())
        return QString();
    m_writer.Wait();
    const QString path = found->second.base + MapSuffix;
    return QFileInfo::exists(path) ? path : QString();
}

void RecoveryStore::WriteDue()
{
    if (!m_lock)
        return;
    for (auto& [id, slot] : m_slots) {
        if (!slot.dirty || slot.source.busy())
            continue;
        if (!slot.source.modified()) {
            slot.dirty = false;
            RemoveFiles(slot);
            continue;
        }
        Write(id, slot);
        slot.dirty = false;
    }
}

void RecoveryStore::Write(int Id, const Slot& Map)
{
    const MapDocument& document = Map.source.document();
    QJsonObject info;
    info[QStringLiteral("pid")] = QCoreApplication::applicationPid();
    info[QStringLiteral("caption")] = Map.source.caption();
    info[QStringLiteral("file")] = Map.source.fileName();
    info[QStringLiteral("picture")] = document.ImagePath + document.ImageName;
    info[QStringLiteral("changed")] = Map.changed.toUTC().toString(Qt::ISODateWithMs);
    const QString mapPath = Map.base + MapSuffix;
    m_writer.Write(Id, Map.base + InfoSuffix, QJsonDocument(info).toJson(), mapPath,
                   MapFile::MapBytes(document, mapPath, ForReadingBack(document.ShapeOrder())));
}

void RecoveryStore::WriteDone(int Id, bool Ok, const QString& Detail)
{
    if (Ok) {
        m_failing = false;
        return;
    }
    // Tried again at the next tick, unless the map is gone or saved since.
    const auto found = m_slots.find(Id);
    if (found != m_slots.end() && found->second.source.modified())
        found->second.dirty = true;
    Failed(Detail);
}

void RecoveryStore::RemoveFiles(Slot& Map)
{
    // After any write still under way, which would bring the files back.
    m_writer.Wait();
    QFile::remove(Map.base + MapSuffix);
    QFile::remove(Map.base + InfoSuffix);
}

void RecoveryStore::Failed(const QString& Detail)
{
    if (m_failing)
        return;
    m_failing = true;
    emit WriteFailed(QStringLiteral("Recovery files cannot be written to \"%1\": %2")
                         .arg(QDir::toNativeSeparators(m_folder), Detail));
}

std::vector<RecoveryStore::Found> RecoveryStore::Scan()
{
    std::vector<Found> found;
    const QDir folder(m_folder);
    const QStringList infos =
        folder.entryList({QStringLiteral("*") + InfoSuffix}, QDir::Files, QDir::Name);
    // Every run that left a lock or a file; taking its lock succeeds only when it ended.
    QSet<QString> sessions;
    for (const QString& name : infos)
        sessions.insert(SessionOf(name));
    for (const QString& name : folder.entryList({QStringLiteral("*") + LockSuffix}, QDir::Files))
        sessions.insert(QFileInfo(name).completeBaseName());
    QSet<QString> gone;
    for (const QString& session : std::as_const(sessions)) {
        if (session.isEmpty() || session == m_session)
            continue;
        std::unique_ptr<QLockFile> lock = LockOf(folder.filePath(session + LockSuffix));
        if (!lock->tryLock(0))
            continue;
        gone.insert(session);
        m_claimed.push_back(std::move(lock));
    }
    for (const QString& name : infos) {
        if (gone.contains(SessionOf(name)))
            found.push_back(Read(folder.filePath(name)));
    }
    // Maps whose description was written but not the map itself hold nothing.
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](const Found& f) { return !f.ok && f.messages.isEmpty(); }),
                found.end());
    return found;
}

RecoveryStore::Found RecoveryStore::Read(const QString& InfoPath)
{
    Found map;
    map.infoPath = InfoPath;
    map.mapPath = InfoPath.left(InfoPath.size() - InfoSuffix.size()) + MapSuffix;
    QFile infoFile(InfoPath);
    QJsonParseError error{};
    const QJsonObject info = infoFile.open(QIODevice::ReadOnly)
                                 ? QJsonDocument::fromJson(infoFile.readAll(), &error).object()
                                 : QJsonObject();
    infoFile.close();
    map.caption = info.value(QStringLiteral("caption")).toString();
    map.fileName = info.value(QStringLiteral("file")).toString();
    map.picture = info.value(QStringLiteral("picture")).toString();
    map.changed =
        QDateTime::fromString(info.value(QStringLiteral("changed")).toString(), Qt::ISODateWithMs)
            .toLocalTime();
    if (!map.fileName.isEmpty())
        map.caption = Module1::FileTitle(map.fileName);
    if (map.caption.isEmpty())
        map.caption = QStringLiteral("Untitled");
    if (!map.changed.isValid())
        map.changed = QFileInfo(map.mapPath).lastModified();

    if (!QFileInfo::exists(map.mapPath)) {
        QFile::remove(InfoPath);
        return map;
    }
    if (info.isEmpty()) {
        map.messages = {MapFile::CannotLoadMessage(), error.errorString()};
    } else {
        QFile mapFile(map.mapPath);
        const bool opened = mapFile.open(QIODevice::ReadOnly);
        const QByteArray bytes = opened ? mapFile.readAll() : QByteArray();
        if (!opened || mapFile.error() != QFileDevice::NoError) {
            map.messages = {MapFile::CannotLoadMessage(), mapFile.errorString()};
        } else {
            // The picture is looked for beside the map's own file, as when it was opened.
            MapFile::ReadResult read =
                MapFile::ReadMap(bytes, map.fileName.isEmpty() ? map.mapPath : map.fileName);
            if (read.ok) {
                map.ok = true;
                map.document = std::move(read.document);
                return map;
            }
            map.messages = read.messages;
            if (!read.detail.isEmpty())
                map.messages.append(read.detail);
        }
    }
    map.keptAs = SetAside(map.mapPath);
    SetAside(InfoPath);
    return map;
}

void RecoveryStore::Remove(const Found& Map)
{
    QFile::remove(Map.mapPath);
    QFile::remove(Map.infoPath);
}

void RecoveryStore::Release()
{
    m_claimed.clear();
}
