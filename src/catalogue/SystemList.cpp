#include "catalogue/SystemList.h"

#include "catalogue/CommandDatabase.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace fenrik {

namespace {

const QString kDatabase = QStringLiteral(".dav");
const QString kImage = QStringLiteral(".bin");
const QString kDefaultName = QStringLiteral("ncCommand");
const QString kNodePart = QStringLiteral("_node ");

bool HasExtension(const QString& name, const QString& extension)
{
    return name.endsWith(extension, Qt::CaseInsensitive);
}

QString AsFolder(const QString& folder)
{
    const QString clean = QDir::cleanPath(folder);
    return clean.endsWith(QDir::separator()) ? clean : clean + QDir::separator();
}

// Names hold brackets and asterisks as well, so that no pattern of the file system's may be made of them.
QFileInfoList FilesOf(const QString& folder, const QString& nameStart, const QString& extension)
{
    QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase);
    files.removeIf([&](const QFileInfo& file) {
        return !file.fileName().startsWith(nameStart, Qt::CaseInsensitive) || !HasExtension(file.fileName(), extension);
    });
    return files;
}

bool IsImage(const QFileInfo& file)
{
    return HasExtension(file.fileName(), kImage) && file.isFile() && file.size() == SystemList::kImageSize;
}

}  // namespace

QString FindSystemDatabase(const QString& folder, const QString& name)
{
    const QString usual = AsFolder(folder) + name + kDatabase;
    if (QFileInfo(usual).isFile())
        return usual;
    for (const QFileInfo& file : FilesOf(folder, name, kDatabase)) {
        if (file.completeBaseName() == name)
            return AsFolder(folder) + file.fileName();
    }
    return {};
}

SystemList::SystemList(const QString& programFolder) : mProgramFolder(AsFolder(programFolder))
{
    Fill({}, {});
}

void SystemList::Fill(const QString& currentName, const QString& currentFolder)
{
    mLines = {{QString(), mProgramFolder}};
    if (!currentName.isEmpty() && !currentFolder.isEmpty())
        AddCurrent(currentName, currentFolder);
    AddFiles(kDatabase);
    AddFiles(kImage);
}

void SystemList::AddCurrent(const QString& name, const QString& folder)
{
    if (const QString database = FindSystemDatabase(folder, name); !database.isEmpty())
        Add(database);
    // A system of nothing but images that was chosen elsewhere would otherwise be lost by pressing OK.
    for (const QFileInfo& image : FilesOf(folder, name, kImage)) {
        if (NameOf(image.fileName()) == name)
            Add(image.filePath());
    }
}

void SystemList::AddFiles(const QString& extension)
{
    for (const QFileInfo& file : FilesOf(mProgramFolder, QString(), extension))
        Add(file.filePath());
}

SystemList::Added SystemList::Add(const QString& path)
{
    if (!IsValid(path))
        return Added::Invalid;
    if (PositionOfFile(path) >= 0)
        return Added::ListedBefore;
    mLines.push_back(LineOf(path));
    return Added::Yes;
}

bool SystemList::IsValid(const QString& path)
{
    // An empty name stands for the default database.
    return !NameOf(path).isEmpty() && (IsImage(QFileInfo(path)) || IsValidCommandDatabase(path));
}

int SystemList::PositionOf(const QString& name) const
{
    const auto line = std::find_if(mLines.begin(), mLines.end(), [&](const SystemLine& it) { return it.name == name; });
    return line == mLines.end() ? -1 : int(line - mLines.begin());
}

int SystemList::PositionOfFile(const QString& path) const
{
    const SystemLine wanted = LineOf(path);
    const auto line = std::find_if(mLines.begin(), mLines.end(), [&](const SystemLine& it) {
        return it.name == wanted.name && it.folder == wanted.folder;
    });
    return line == mLines.end() ? -1 : int(line - mLines.begin());
}

SystemLine SystemList::LineOf(const QString& path) const
{
    const QFileInfo file(path);
    const SystemLine line{NameOf(path), AsFolder(file.path())};
    // The default file is the first line. It is also what new systems are made from, and must not become one.
    const bool isDefault = line.folder == mProgramFolder && line.name.compare(kDefaultName, Qt::CaseInsensitive) == 0;
    return isDefault ? mLines.front() : line;
}

QString SystemList::NameOf(const QString& path)
{
    const QString file = QFileInfo(path).fileName();
    const QString name = file.chopped(kDatabase.size());
    const auto node = HasExtension(file, kImage) ? name.indexOf(kNodePart, 0, Qt::CaseInsensitive) : -1;
    return node < 0 ? name : name.left(node);
}

QString SystemList::DatabaseOf(const SystemLine& line) const
{
    const QString path = FindSystemDatabase(line.folder, line.IsDefault() ? kDefaultName : line.name);
    return IsValidCommandDatabase(path) ? path : QString();
}

int SystemList::NodeImagesOf(const SystemLine& line)
{
    const QFileInfoList files = FilesOf(line.folder, line.name, kImage);
    return int(std::count_if(files.begin(), files.end(), IsImage));
}

}  // namespace fenrik
