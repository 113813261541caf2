#pragma once

#include "SimFixture.h"
#include "WindowDriver.h"
#include "ui/main/MainPages.h"
#include "ui/main/PageServices.h"

#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <memory>

class WindowOperator;

// A stand-in for the main window: a tab widget with the panel-operation pages, PrBar and a status
// line, the window's operator, over a fresh SQLite database and simulated panels on loopback.
// Build the panels and users first, then call open() to make the pages.
class PagesFixture
{
public:
    PagesFixture();
    ~PagesFixture();

    SimFixture& sim() { return m_sim; }
    Database& db() { return m_sim.db(); }
    QWidget& window() { return m_window; }
    MainPages& pages() { return *m_pages; }
    WindowOperator& op() { return *m_op; }
    QProgressBar* progressBar() const { return m_progress; }
    QString pictureFolder() const { return m_pictures.path(); }

    bool open();

    template <typename T> T* find(const QString& name) const { return WindowDriver::find<T>(&m_window, name); }
    // Clicks the named button (which must be enabled).
    bool click(const QString& name) const;
    // Waits until the running panel operation is over.
    bool waitIdle() const;

private:
    SimFixture m_sim;
    QTemporaryDir m_pictures;
    QWidget m_window;
    QTabWidget* m_tabs = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_status = nullptr;
    WindowOperator* m_op = nullptr;
    MainPages* m_pages = nullptr;
};
