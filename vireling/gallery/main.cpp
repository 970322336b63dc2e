#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include <QApplication>
int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    Vireling::initialiseResources();
    QApplication app(argc, argv);
    Vireling::installAppearance(Vireling::Theme::Dark);
    return 0;
}
