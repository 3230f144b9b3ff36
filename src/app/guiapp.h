// The application object: one per process, made by main before anything else of Qt.
//
// It installs the way of all Qt diagnostics into the system log, makes the four fonts, owns the bus
// thread, and sees every event of the process first, so that a key press is noticed before any screen
// has it. It does not know the screens; the main window belongs to main.
// GUI thread only, except the message handler, which runs on whichever thread a message arises.
#ifndef LUMENPANEL_APP_GUIAPP_H
#define LUMENPANEL_APP_GUIAPP_H

#include "model/language.h"

#include <QApplication>
#include <QFont>
#include <QString>

class CBusIfThread;
class Window;

class GuiApp : public QApplication {
    Q_OBJECT

public:
    // The one instance, made at the first call; later calls construct nothing and ignore the arguments.
    // Never null. Making it opens the system log, starts the bus thread and ends the process if memory
    // is short. argc and argv must outlive the instance.
    static GuiApp* createInstance(int& argc, char** argv);
    ~GuiApp() override;

    // The main window, null until its constructor ran. Not owned.
    static Window* getMainWindowPointer();
    static void setMainWindowPointer(Window* window);

    // Directory of icons and translations, without a slash at its end.
    static QString getResourcePath();

    // The font for texts of a language. size: 18 gives 18 pixels, any other value 14. LANG_UNDEFINED
    // stands for the language now in use. Never null once the instance exists; owned by the process.
    static QFont* getFont(int size, LANG_ENUM lang);

    // Makes the 14-pixel font of the language the application's own. LANG_UNDEFINED is not resolved
    // here: it counts as a language of the Latin fonts.
    void useFont(LANG_ENUM lang) const;

    // A new font, owned by the caller. If a file name is given that file is loaded first; a file that
    // cannot be loaded is logged, and the font falls to what Qt finds for the family.
    QFont* createFontPointer(const QString& fileName, const QString& family, int pixelSize) const;

    // Delivers an event. Key presses are logged and told; nothing is dropped or changed.
    bool notify(QObject* receiver, QEvent* event) override;

signals:
    // One of the five keys was pressed and has not yet reached its receiver. A long OK does not count.
    void someKeyWasPressed();

private slots:
    void handleSignalByte();

private:
    GuiApp(int& argc, char** argv);
    void readArguments();
    void installSignalHandler();
    void createFonts();
    void startBusThread();
    void noticeKeyPress(const QObject* receiver, int key, const QString& text);
    static void handleMessage(QtMsgType type, const QString& text);

    CBusIfThread* m_pBusIfThread;

    static GuiApp* m_pInstance;
    static Window* m_pWindow;
    static bool myLogQtDebug;
    // The names tell the heights that the fonts once had, not the pixel sizes: h11 is 14, h13 is 18.
    static QFont* pFontLangEn_h11;
    static QFont* pFontLangEn_h13;
    static QFont* pFontLangUnicode_h11;
    static QFont* pFontLangUnicode_h13;
};

#endif
