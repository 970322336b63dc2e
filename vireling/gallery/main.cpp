#include "vireling/gallery/gallery_window.h"
#include "vireling/gallery/options.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/picture.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>
#include <QTextStream>

#include <memory>

using namespace Vireling;

namespace {

enum ExitCode
{
    Done = 0,
    PictureFailed = 1,
    WrongUsage = 2
};

int complain(const QString &message)
{
    QTextStream(stderr) << "vireling_gallery: " << message << '\n';
    return WrongUsage;
}

void listPages()
{
    QTextStream output(stdout);
    for (const GalleryPage &page : galleryPages())
        output << page.name << '\n';
}

/**
 * Scales by the logical density of the screen, which every metric and font follows,
 * and not by Qt's ratio of device pixels, which takes whole numbers alone and would
 * hide a size that forgets to scale.
 */
void setScale(double scale)
{
    qputenv("QT_FONT_DPI", QByteArray::number(qRound(96 * scale)));
}

/** Before the application exists. Pictures have one scale on every machine. */
void prepareDensity(const GalleryOptions &options)
{
    if (options.scale || !options.screenshot.isEmpty())
        setScale(options.scale.value_or(1));
    else
        initialiseHighDpi();
}

bool isOurs(const QString &style)
{
    return style.isEmpty() || style.compare(QLatin1String("vireling"), Qt::CaseInsensitive) == 0;
}

/** Adwaita has its dark colours in a style of its own. */
QString themedStyleName(const QString &style, Theme theme)
{
    const bool adwaita = style.compare(QLatin1String("adwaita"), Qt::CaseInsensitive) == 0;
    return adwaita && theme == Theme::Dark ? QStringLiteral("adwaita-dark") : style;
}

/**
 * Another style, with the same fonts, icons and, where it brings no colours of its
 * own, the same standard colours: what is compared is the drawing.
 */
bool installForeignStyle(const GalleryOptions &options)
{
    const QString name = themedStyleName(options.style, options.theme);
    QStyle *style = QStyleFactory::create(name);
    if (!style)
        return false;
    QApplication::setStyle(style);
    const bool ownColours = name.startsWith(QLatin1String("adwaita"), Qt::CaseInsensitive);
    QApplication::setPalette(ownColours ? style->standardPalette()
                                        : QPalette(themePalette(options.theme)));
    return true;
}

const GalleryPage &pageByName(const QString &name)
{
    for (const GalleryPage &page : galleryPages())
        if (name == QLatin1String(page.name))
            return page;
    return galleryPages().front();
}

int takePicture(const GalleryOptions &options)
{
    const std::unique_ptr<QWidget> page(pageByName(options.page).make(nullptr));
    page->setEnabled(!options.disabled);
    if (savePicture(*page, options.screenshot))
        return Done;
    complain(QStringLiteral("Cannot write \"%1\"").arg(options.screenshot));
    return PictureFailed;
}

int openWindow(const GalleryOptions &options)
{
    GalleryWindow window(options.disabled ? GalleryWindow::Controls::Disabled
                                          : GalleryWindow::Controls::Enabled);
    window.openPage(options.page);
    window.show();
    return QApplication::exec();
}

int run(const GalleryOptions &options)
{
    installAppearance(options.theme);
    if (!isOurs(options.style) && !installForeignStyle(options))
        return complain(QStringLiteral("Unknown style: \"%1\"").arg(options.style));
    PseudoTranslator translator;
    if (options.pseudo)
        QCoreApplication::installTranslator(&translator);
    if (options.rightToLeft)
        QApplication::setLayoutDirection(Qt::RightToLeft);
    return options.screenshot.isEmpty() ? openWindow(options) : takePicture(options);
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 0; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    const ParsedOptions parsed = parseOptions(arguments);
    if (!parsed.error.isEmpty())
        return complain(parsed.error);
    if (parsed.options.help) {
        const QCoreApplication application(argc, argv);
        QTextStream(stdout) << optionsHelp();
        return Done;
    }
    if (parsed.options.listPages) {
        listPages();
        return Done;
    }
    prepareDensity(parsed.options);
    initialiseResources();
    initialiseToolkit();
    int programNameAlone = 1; // Qt would take "--style" for its own
    QApplication application(programNameAlone, argv);
    return run(parsed.options);
}
