#include "ui/common/FileDialog.h"

#include <QFileDialog>
#include <optional>

namespace {
std::optional<QString> s_nextFileName;
}

void FileDialog::setNextFileName(const QString& fileName)
{
    s_nextFileName = fileName;
}

bool FileDialog::takeNext(QString* fileName)
{
    if (!s_nextFileName)
        return false;
    *fileName = *s_nextFileName;
    s_nextFileName.reset();
    return true;
}

QString FileDialog::getOpenFileName(QWidget* parent, const QString& caption, const QString& directory,
                                    const QString& filter)
{
    QString name;
    if (takeNext(&name))
        return name;
    return QFileDialog::getOpenFileName(parent, caption, directory, filter);
}

QString FileDialog::getSaveFileName(QWidget* parent, const QString& caption, const QString& directory,
                                    const QString& filter)
{
    QString name;
    if (takeNext(&name))
        return name;
    return QFileDialog::getSaveFileName(parent, caption, directory, filter);
}
