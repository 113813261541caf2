#pragma once

#include "support/StationFixture.h"

#include <QTest>

// The start of a test against simulated panels: a StationFixture named f that must be ready.
#define KX_READY_STATION(f)                                                                                            \
    StationFixture f;                                                                                                  \
    QVERIFY2(f.isReady(), qPrintable(f.error()))

// The same, once per engine of the test's "engine" column (TestDatabases::addEngineRows): an
// engine that is not configured is skipped.
#define KX_READY_STATION_ON_ENGINE(f)                                                                                  \
    QFETCH(int, engine);                                                                                               \
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));                                                                  \
    StationFixture f{ TestDatabases::Engine(engine) };                                                                 \
    QVERIFY2(f.isReady(), qPrintable(f.error()))
