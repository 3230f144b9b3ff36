// Rich text that does no harm: what strangers chose (the name of a network or of a bundle, the words of the
// alert log) may ask for rich text, and Qt would then read whatever files it names.
//
// Pure function; any thread.
#ifndef LUMENPANEL_COMMON_RICHTEXT_H
#define LUMENPANEL_COMMON_RICHTEXT_H

#include <QString>

// The text with those tags alone that set words (bold, line break, paragraph, picture without a source and
// the like), with those attributes alone that name no file; other tags are left out, and a "<" that begins no
// tag becomes "&lt;". A text of such tags alone comes back unchanged.
QString harmlessRichText(const QString& text);

#endif
