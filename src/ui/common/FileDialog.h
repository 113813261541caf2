#pragma once

#include <QString>

class QWidget;

// File choices of the station go through here so tests can give the answer in advance.
class FileDialog
{
public:
    // The next open/save dialog returns this name at once; an empty name stands for Cancel.
    static void setNextFileName(const QString& fileName);

    static QString getOpenFileName(QWidget* parent, const QString& caption, const QString& directory,
                                   const QString& filter);
    static QString getSaveFileName(QWidget* parent, const QString& caption, const QString& directory,
                                   const QString& filter);

private:
    static bool takeNext(QString* fileName);
};
