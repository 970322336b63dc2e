#pragma once

class QString;
class QWidget;

namespace Vireling {

/** Shows `page` by itself for a moment and writes what it looks like as PNG; false if it cannot. */
bool savePicture(QWidget &page, const QString &file);

} // namespace Vireling
