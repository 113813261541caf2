#include "store/SearchFilter.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_SearchFilter : public QObject
{
    Q_OBJECT

private slots:
    void typing();
    void enter();
    void recognisers();
};

void tst_SearchFilter::typing()
{
    const QList<QVariant> numbers = { 1, 12, 120, u"12"_s, QVariant(), 112 };
    const QList<QVariant> names = { u"Ahmet"_s, u"ahu"_s, u"Mehmet Ah"_s, u"Ah"_s, QVariant(), u"A"_s };

    // Blank text or no column: the filter goes.
    QCOMPARE(SearchFilter::whileTyping(u"Adi"_s, u"   "_s).action, SearchFilter::TypingAction::RemoveFilter);
    QCOMPARE(SearchFilter::whileTyping(u""_s, u"Ah"_s).action, SearchFilter::TypingAction::RemoveFilter);

    // A number filters on equality, not on rows beginning with it.
    const auto twelve = SearchFilter::whileTyping(u"ID"_s, u"12"_s);
    QCOMPARE(twelve.action, SearchFilter::TypingAction::SetFilter);
    QList<int> hits;
    for (int i = 0; i < numbers.size(); ++i) {
        if (twelve.criterion.matches(numbers.at(i)))
            hits << i;
    }
    QCOMPARE(hits, (QList<int>{ 1, 3 }));

    // Text keeps the rows that begin with it, whatever the letter case.
    const auto ah = SearchFilter::whileTyping(u"Adi"_s, u"Ah"_s);
    hits.clear();
    for (int i = 0; i < names.size(); ++i) {
        if (ah.criterion.matches(names.at(i)))
            hits << i;
    }
    QCOMPARE(hits, (QList<int>{ 0, 1, 3 }));
    // Wildcards typed are just characters.
    QVERIFY(!SearchFilter::whileTyping(u"Adi"_s, u"A*"_s).criterion.matches(u"Ahmet"_s));
    QVERIFY(SearchFilter::whileTyping(u"Adi"_s, u"A*"_s).criterion.matches(u"A*b"_s));
    // Turkish letter case: capitals with and without dots find their small letters, both i's alike.
    QVERIFY(SearchFilter::whileTyping(u"Soyadi"_s, u"YIL"_s).criterion.matches(u"Yılmaz"_s));
    QVERIFY(SearchFilter::whileTyping(u"Soyadi"_s, u"şah"_s).criterion.matches(u"ŞAHİN"_s));
    QVERIFY(SearchFilter::onEnter(u"ismail"_s).criterion.matches(u"İSMAİL"_s));
    QVERIFY(!SearchFilter::onEnter(u"ismail"_s).criterion.matches(u"İSMAİLE"_s));

    // A date leaves the filter as it was.
    QCOMPARE(SearchFilter::whileTyping(u"Tarih"_s, u"14/03/2016"_s).action, SearchFilter::TypingAction::KeepFilter);
    // An unfinished date is text until it is complete.
    QCOMPARE(SearchFilter::whileTyping(u"Tarih"_s, u"14/03"_s).action, SearchFilter::TypingAction::SetFilter);
}

void tst_SearchFilter::enter()
{
    const auto blank = SearchFilter::onEnter(u" "_s);
    QVERIFY(!blank.ok);
    QCOMPARE(blank.message.turkish(), u"Lütfen bir değer giriniz."_s);

    const QList<QVariant> ids = { 5, 15, 150 };
    const auto fifteen = SearchFilter::onEnter(u"15"_s);
    QCOMPARE(SearchFilter::findRow(fifteen.criterion, ids), 1);
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"1"_s).criterion, ids), -1);

    // Text looks for the whole value, not a beginning.
    const QList<QVariant> names = { u"Ahmet Can"_s, u"ahmet"_s, u"Ahmet"_s };
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"Ahmet"_s).criterion, names), 1);
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"Ahmet"_s).criterion, names, 2), 2);
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"Ahm"_s).criterion, names), -1);

    // A date finds the day in stored date-times of any form; with a time, the exact moment.
    const QList<QVariant> dates = { u"2016-03-13 10:00:00"_s, QDateTime(QDate(2016, 3, 14), QTime(17, 45)),
                                    u"2016-03-14 08:01:02"_s, QVariant() };
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"14.03.2016"_s).criterion, dates), 1);
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"14/03/2016 08:01:02"_s).criterion, dates), 2);
    QCOMPARE(SearchFilter::findRow(SearchFilter::onEnter(u"15/03/2016"_s).criterion, dates), -1);
}

void tst_SearchFilter::recognisers()
{
    double v = 0;
    QVERIFY(SearchFilter::isNumber(u" -1,5 "_s, &v));
    QCOMPARE(v, -1.5);
    for (const QString& no : { u""_s, u"12a"_s, u"1.2.3"_s, u"--1"_s, u"1 2"_s })
        QVERIFY2(!SearchFilter::isNumber(no), qPrintable(no));

    QDateTime dt;
    bool hasTime = true;
    QVERIFY(SearchFilter::isDate(u"2016-03-14 9:05"_s, &dt, &hasTime));
    QCOMPARE(dt, QDateTime(QDate(2016, 3, 14), QTime(9, 5)));
    QVERIFY(hasTime);
    QVERIFY(SearchFilter::isDate(u"14.03.16"_s, &dt));
    QCOMPARE(dt.date(), QDate(2016, 3, 14));
    for (const QString& no : { u"31/02/2016"_s, u"14/03/2016 25:00"_s, u"Ahmet"_s, u"2016"_s })
        QVERIFY2(!SearchFilter::isDate(no), qPrintable(no));
}

QTEST_GUILESS_MAIN(tst_SearchFilter)
#include "tst_SearchFilter.moc"
