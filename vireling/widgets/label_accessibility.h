#pragma once

namespace Vireling {

/**
 * Tells assistive programs what the toolkit's labels are: ElidedLabel a text that is
 * named by what it says, IconLabel and StaticSvgWidget pictures. Their constructors
 * call this; further calls do nothing.
 */
void registerLabelAccessibility();

} // namespace Vireling
