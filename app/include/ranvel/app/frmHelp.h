// The manual in a window of the program's own, so that it opens on any
// desktop, with or without a web browser: the pages of <app>/HELP with
// their contents at the side, links followed inside the window, back and
// forward, and a search of the words of every page. One window serves every
// request; a second request brings it to the front at the page asked for.
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

class QTextBrowser;

namespace ranvel {

class frmHelp : public QWidget {
    Q_OBJECT
public:
    explicit frmHelp(QWidget* parent = nullptr);
    ~frmHelp() override;

    // Shows a page of the manual: its file name in HELP, with or without a
    // place in it ("settings.html#view"). A file that is not there leaves
    // the window as it was and gives a message; false then.
    bool Open(const std::string& page);
    // The file name of the page shown ("index.html"), empty before any.
    QString CurrentPage() const;

    // A page that holds every word searched for.
    struct Found {
        QString page;   // its file name in HELP
        QString title;  // as the contents name it
        int hits = 0;   // how often the words stand in it
    };
    // The pages that hold every word of the text, each word found at the
    // start of a word of the page whatever its case ("print" finds
    // "Printing"); the most hits first, then in the order of the contents.
    // The list of the Search tab shows them.
    std::vector<Found> Search(const QString& words);
    // Opens a found page with the words searched for marked, at the first.
    void OpenFound(const QString& page);
    // The stretches of the page marked as found.
    int MarkedCount() const;

    QTextBrowser* rtfPage() const;

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

// The one help window at the page asked for: made at the first request,
// brought to the front at the next. False, with a message, when the page's
// file is not there.
bool ShowManual(const std::string& page);
// The help window while it is open, else nullptr.
frmHelp* HelpWindow();

}  // namespace ranvel
