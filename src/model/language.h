// The languages of the display: the values of cfg.language. Any thread.
#ifndef LUMENPANEL_MODEL_LANGUAGE_H
#define LUMENPANEL_MODEL_LANGUAGE_H

#include <QMetaType>

enum LANG_ENUM : int {
    LANG_ENGLISH = 0,
    LANG_FRENCH = 1,
    LANG_GERMAN = 2,
    LANG_RUSSIAN = 3,
    LANG_SPANISH = 4,
    LANG_CHINESE = 5,
    LANG_JAPANESE = 6,
    LANG_UNDEFINED = 7 // none yet; as an argument of a font function, the language now in use
};
Q_DECLARE_METATYPE(LANG_ENUM)

#endif
