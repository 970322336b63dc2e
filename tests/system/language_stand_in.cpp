/*
 * Stands in for a change of the appliance's language, which only the system makes: loaded
 * with LD_PRELOAD into the crash reporter, it installs a translator once the file
 * "/tmp/language" appears. Every text is then read between angle brackets.
 */
#include <QCoreApplication>
#include <QFile>
#include <QFileSystemWatcher>
#include <QTranslator>

namespace {

class BracketTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;

    QString translate(const char * /*context*/, const char *sourceText,
                      const char * /*disambiguation*/, int /*count*/) const override
    {
        return QLatin1Char('<') + QString::fromUtf8(sourceText) + QLatin1Char('>');
    }
    bool isEmpty() const override { return false; }
};

void changeLanguage(QFileSystemWatcher *watcher)
{
    if (!QFile::exists(QStringLiteral("/tmp/language")))
        return;
    watcher->disconnect();
    watcher->deleteLater();
    QCoreApplication::installTranslator(new BracketTranslator(QCoreApplication::instance()));
}

void watchForTheChange()
{
    auto *watcher = new QFileSystemWatcher({QStringLiteral("/tmp")}, QCoreApplication::instance());
    QObject::connect(watcher, &QFileSystemWatcher::directoryChanged, watcher,
                     [watcher] { changeLanguage(watcher); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchForTheChange)
