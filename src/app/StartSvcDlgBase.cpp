#include "app/StartSvcDlgBase.h"

#include "foundation/Trace.h"
#include "mainwindow/DialogUnits.h"
#include "mainwindow/PrivateMessages.h"
#include "resource.h"
#include "toolkit/DialogControl.h"
#include "toolkit/QuillgateGUIRes.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPalette>
#include <QProgressBar>
#include <QScreen>
#include <QTimerEvent>

#include <thread>

namespace {

QString ToQString(const stdstr& text) {
    return QString::fromStdU16String(text);
}

} // namespace

StartSvcDlgBase::StartSvcDlgBase(bool start, std::uint32_t textStringId, Setup setup)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowStaysOnTopHint),
      m_start(start), m_textStringId(textStringId), m_setup(std::move(setup)),
      m_target(std::make_shared<GuardedPostTarget>(this)) {
    DialogControl::SetId(this, DialogId);
    // The template's font: the dialog face at 8 points.
    setFont(QFont(QuillgateGUIRes::DialogFace(), 8));
    const DialogUnits units = DialogUnits::FromFont(font());
    setFixedSize(units.ToPixelsX(DialogWidthUnits), units.ToPixelsY(DialogHeightUnits));

    QPalette white = palette();
    white.setBrush(QPalette::Window, m_setup.background);
    setPalette(white);
    setAutoFillBackground(true);

    m_text = new QLabel(this);
    DialogControl::SetId(m_text, TextId);
    m_text->setGeometry(units.ToPixels(TextUnits));
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_text->setTextFormat(Qt::PlainText);

    m_progressBar = new QProgressBar(this);
    DialogControl::SetId(m_progressBar, ProgressId);
    m_progressBar->setGeometry(units.ToPixels(ProgressUnits));
    m_progressBar->setTextVisible(false);
}

StartSvcDlgBase::~StartSvcDlgBase() {
    m_timer.stop();
    m_target->Clear();
    // A worker still running (the dialog was ended from outside) goes on by itself.
    if (m_thread)
        m_thread->terminate();
}

int StartSvcDlgBase::DoModal(QWidget* owner, std::intptr_t /*initParam*/) {
    if (owner != nullptr)
        setParent(owner, windowFlags());
    if (!OnInitDialog())
        return m_endResult;
    return exec();
}

bool StartSvcDlgBase::OnInitDialog() {
    setWindowTitle(ToQString(m_setup.strings(IDS_PRODUCT_NAME)));
    m_text->setText(ToQString(m_setup.strings(m_textStringId)));

    m_progressBar->setRange(ServiceProgress::RangeMin, ServiceProgress::RangeMax);
    m_progressBar->setValue(m_progress.Position());

    CenterWindow();

    const WorkerFactory make =
        m_setup.makeWorker
            ? m_setup.makeWorker
            : [](bool start, const StartServiceWorker::Setup& setup,
                 std::shared_ptr<GuardedPostTarget> target) {
                  return std::make_shared<StartServiceWorker>(start, setup, std::move(target));
              };
    m_thread = make(m_start, m_setup.worker, m_target);
    if (!m_thread || !m_thread->start()) {
        TraceMsg(TRACE_DEBUG, u"CStartSvcDlg::OnInitDialog - Failed to create thread.");
        m_thread.reset();
        // Ended before it was ever shown; the callers read 0 as success.
        m_endResult = 0;
        setResult(0);
        return false;
    }
    m_timer.start(static_cast<int>(m_setup.timerPeriod.count()), this);
    return true;
}

bool StartSvcDlgBase::event(QEvent* event) {
    if (event->type() == static_cast<QEvent::Type>(WM_QG_SERVICE_THREAD_DONE)) {
        OnStartServiceFinished();
        return true;
    }
    return QDialog::event(event);
}

void StartSvcDlgBase::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) {
        QDialog::timerEvent(event);
        return;
    }
    if (m_progress.Tick())
        m_progressBar->setValue(m_progress.Position());
}

void StartSvcDlgBase::closeEvent(QCloseEvent* event) {
    // Only the worker's end closes the dialog.
    event->ignore();
}

void StartSvcDlgBase::OnStartServiceFinished() {
    m_timer.stop();
    m_progress.Finish();
    m_progressBar->setValue(m_progress.Position());
    // The full bar is to be seen during the pause and the wait, which block this thread.
    m_progressBar->repaint();
    std::this_thread::sleep_for(m_setup.finishPause);
    if (!m_thread)
        return;
    if (m_thread->WaitForEnd(m_setup.threadWait)) {
        m_thread->shutdown();
        const int code = m_thread->Result();
        m_thread.reset();
        done(code);
        TraceFmt(TRACE_DEBUG,
                 u"CStartSvcDlg::OnStartServiceFinished(): Starting thread returned (%d)", code);
        return;
    }
    TraceMsg(TRACE_ERROR,
             u"CStartSvcDlg::OnStartServiceFinished(): m_hThread Failed to close down properly");
    // The worker cannot be ended; it is let go and ends by itself.
    m_thread->terminate();
    m_thread.reset();
    done(-1);
}

void StartSvcDlgBase::CenterWindow() {
    QRect area;
    if (QWidget* owner = parentWidget())
        area = owner->window()->frameGeometry();
    else if (QScreen* screen = this->screen())
        area = screen->availableGeometry();
    if (area.isEmpty())
        return;
    move(area.center() - QPoint(width() / 2, height() / 2));
}
