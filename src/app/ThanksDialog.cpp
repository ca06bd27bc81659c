#include "ThanksDialog.h"

#include "OkButton.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

// The sample game's universe maps are MIT-licensed; the licence asks for its
// notice to travel with them, so it is shown in full.
const char *const Acknowledgements = R"(
<h3>Thanks to</h3>
<p><b>Jeff Johnson and Jeff McBride</b>, who made Stars!, and everyone who
helped them bring it out. Decades on, it is still one of the deepest
strategy games there is.</p>
<p><b>The players who keep Stars! alive</b>: the hosts who run games turn
after turn, the writers of strategy guides and race designs, the people who
take the game's files apart so that others can understand them, and everyone
who still sends in their turns.</p>
<p><b>Brandon Arrendondo</b>, for the real universe maps used by the sample
game.</p>
<hr>
<p><small>The universe maps of the sample game:<br>
MIT License<br>
Copyright (c) 2017 Brandon Arrendondo</small></p>
<p><small>Permission is hereby granted, free of charge, to any person obtaining a copy
of this software and associated documentation files (the "Software"), to deal
in the Software without restriction, including without limitation the rights
to use, copy, modify, merge, publish, distribute, sublicense, and/or sell
copies of the Software, and to permit persons to whom the Software is
furnished to do so, subject to the following conditions:</small></p>
<p><small>The above copyright notice and this permission notice shall be included in all
copies or substantial portions of the Software.</small></p>
<p><small>THE SOFTWARE IS PROVIDED "AS IS", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR
IMPLIED, INCLUDING BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY,
FITNESS FOR A PARTICULAR PURPOSE AND NONINFRINGEMENT. IN NO EVENT SHALL THE
AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, DAMAGES OR OTHER
LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING FROM,
OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER DEALINGS IN THE
SOFTWARE.</small></p>
)";

} // namespace

ThanksDialog::ThanksDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Thanks to..."));

    auto *text = new QTextBrowser;
    text->setObjectName(QStringLiteral("Acknowledgements"));
    text->setHtml(QString::fromUtf8(Acknowledgements));

    QDialogButtonBox *buttons = okButtonBox(this);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(buttons, 0, Qt::AlignCenter);
    resize(460, 420);
}
