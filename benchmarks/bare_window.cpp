// The least a program with a window can do: shows one, maximised and empty, and
// exits once it has been painted.

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

namespace {

class BareWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        // Not quit(): the time taken is that up to here, without the tidying up.
        QTimer::singleShot(0, this, [] { std::exit(EXIT_SUCCESS); });
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    BareWindow window;
    window.showMaximized();
    return QApplication::exec();
}
