#include "crash_reporter/xml_text.h"

#include <QTest>

class XmlTextTest : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeUnitFollowsXmlsCharacterRule();
    void surrogates_data();
    void surrogates();
    void aCleanTextIsNotCopied();
    void aNullTextStaysNull();
};

void XmlTextTest::everyCodeUnitFollowsXmlsCharacterRule()
{
    // Char ::= #x9 | #xA | #xD | [#x20-#xD7FF] | [#xE000-#xFFFD] | [#x10000-#x10FFFF]
    for (uint unit = 0; unit <= 0xFFFF; ++unit) {
        const bool allowed = unit == 0x9 || unit == 0xA || unit == 0xD ||
                             (unit >= 0x20 && unit <= 0xD7FF) || (unit >= 0xE000 && unit <= 0xFFFD);
        const QChar c(static_cast<ushort>(unit));
        const QString expected(allowed ? c : QChar(0xFFFD));
        QCOMPARE(xmlText(QString(c)), expected);
    }
}

void XmlTextTest::surrogates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QChar high(0xD83D);
    const QChar low(0xDE00);
    const QChar replaced(0xFFFD);
    const auto text = [](std::initializer_list<QChar> units) {
        return QString(units.begin(), static_cast<int>(units.size()));
    };
    QTest::newRow("a pair") << text({high, low}) << text({high, low});
    QTest::newRow("two pairs") << text({high, low, high, low}) << text({high, low, high, low});
    QTest::newRow("swapped") << text({low, high}) << text({replaced, replaced});
    QTest::newRow("high at the end") << text({'a', high}) << text({'a', replaced});
    QTest::newRow("high before a letter") << text({high, 'a'}) << text({replaced, 'a'});
    QTest::newRow("high before a pair") << text({high, high, low}) << text({replaced, high, low});
    QTest::newRow("low after a pair") << text({high, low, low}) << text({high, low, replaced});
}

void XmlTextTest::surrogates()
{
    QFETCH(QString, text);
    QTEST(xmlText(text), "expected");
}

void XmlTextTest::aCleanTextIsNotCopied()
{
    const QString text = QStringLiteral("line one\nline two").repeated(3);
    QCOMPARE(xmlText(text).constData(), text.constData());
}

void XmlTextTest::aNullTextStaysNull()
{
    QVERIFY(xmlText(QString()).isNull());
}

QTEST_APPLESS_MAIN(XmlTextTest)
#include "tst_xml_text.moc"
