#pragma once

#include <QWidget>

#include <memory>

namespace Vireling {

/**
 * Shows a window that is never active, as it looks then. On a page that is in the
 * active window nothing else can look so.
 */
class InactivePicture : public QWidget
{
public:
    /** Takes `window`, which is laid out but never shown. */
    InactivePicture(std::unique_ptr<QWidget> window, QWidget *parent = nullptr);
    ~InactivePicture() override;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::unique_ptr<QWidget> pictured;
};

} // namespace Vireling
