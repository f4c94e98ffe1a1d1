#pragma once
// The body of the service start/stop dialog (dialog 306), shared by both CStartSvcDlg
// variants, which differ only in their text and word. It shows the product name as title, a
// text (control 1018) and a progress bar (control 1019) that runs up to 114 of 120 while a
// worker thread runs the service's executable; the worker's WM_QG_SERVICE_THREAD_DONE (1025)
// fills the bar, and the dialog ends with the worker's result once the worker has returned,
// or with -1 when it has not within 2 seconds (the worker is then let go, not waited for).
// White, topmost, centred; it cannot be closed by the user, only by its worker.
//
// Everything the dialog needs comes in a Setup, so that a test can run it on the offscreen
// platform with a scripted executable, a short pause and a short timer.

#include "app/ServiceProgress.h"
#include "app/StartServiceWorker.h"
#include "app/SupervisionTypes.h"

#include <QBasicTimer>
#include <QBrush>
#include <QDialog>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

class QLabel;
class QProgressBar;

class StartSvcDlgBase : public QDialog {
public:
    using WorkerFactory = std::function<std::shared_ptr<StartServiceWorker>(
        bool start, const StartServiceWorker::Setup& setup,
        std::shared_ptr<GuardedPostTarget> target)>;

    struct Setup {
        // What the worker runs and how it pauses (see StartServiceWorker::Setup).
        StartServiceWorker::Setup worker;
        StringLookup strings = TranslatedString;
        // The background of the dialog and its text (the shared white brush).
        QBrush background = QBrush(Qt::white);
        std::chrono::milliseconds timerPeriod{100};
        // How long the full bar stands before the dialog waits for its worker.
        std::chrono::milliseconds finishPause{100};
        std::chrono::milliseconds threadWait{2000};
        // Makes the worker; empty: a StartServiceWorker.
        WorkerFactory makeWorker;
    };

    static constexpr int DialogId = 306;
    static constexpr int TextId = 1018;
    static constexpr int ProgressId = 1019;
    static constexpr int TimerId = 1;
    // The template, in dialog units.
    static constexpr int DialogWidthUnits = 289;
    static constexpr int DialogHeightUnits = 74;
    static constexpr QRect TextUnits{7, 3, 275, 39};
    static constexpr QRect ProgressUnits{7, 51, 275, 14};

    ~StartSvcDlgBase() override;

    // Runs the dialog modally, owned by `owner` (null: none), and answers its result.
    int DoModal(QWidget* owner = nullptr, std::intptr_t initParam = 0);

    QLabel* Text() const { return m_text; }
    QProgressBar* Progress() const { return m_progressBar; }
    const ServiceProgress& ProgressState() const { return m_progress; }

protected:
    StartSvcDlgBase(bool start, std::uint32_t textStringId, Setup setup);

    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    // Escape: the dialog has no cancel.
    void reject() override {}

private:
    // WM_INITDIALOG; false when the dialog has already ended.
    bool OnInitDialog();
    void OnStartServiceFinished();
    void CenterWindow();

    const bool m_start;
    const std::uint32_t m_textStringId;
    Setup m_setup;
    ServiceProgress m_progress;
    QLabel* m_text = nullptr;
    QProgressBar* m_progressBar = nullptr;
    QBasicTimer m_timer;
    std::shared_ptr<GuardedPostTarget> m_target;
    std::shared_ptr<StartServiceWorker> m_thread;
    int m_endResult = 0;
};
