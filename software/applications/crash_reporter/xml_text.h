#pragma once

#include <QString>

/**
 * `text` with every code unit that XML 1.0 cannot carry (control characters but
 * tab, line feed and carriage return; lone surrogates; U+FFFE and U+FFFF)
 * replaced by U+FFFD. QXmlStreamWriter drops some of these and lets others spoil
 * every text that follows.
 */
QString xmlText(QString text);
