#include "platform/linux/x11/X11World.h"

#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <ctime>
#include <iostream>

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

/// Programs that nobody here wrote.
class X11PasteboardProgramsTest : public X11PasteboardTest {
protected:
    ~X11PasteboardProgramsTest() override {
        for (const auto& process : processes_) {
            process->kill();
            process->waitForFinished();
        }
    }

    QProcess& run(const QString& program, const QStringList& arguments, const std::string& input = {}) {
        processes_.push_back(std::make_unique<QProcess>());
        QProcess& process = *processes_.back();
        process.start(program, arguments);
        process.write(input.data(), static_cast<qint64>(input.size()));
        process.closeWriteChannel();
        return process;
    }
    /// Stays until it loses the selection or is killed.
    QProcess& copyWithXclip(const std::string& contents, const QString& target = "UTF8_STRING") {
        return run("xclip", {"-quiet", "-selection", "clipboard", "-i", "-t", target}, contents);
    }
    QProcess& copyWithXsel(const std::string& contents) {
        return run("xsel", {"--nodetach", "--clipboard", "--input"}, contents);
    }
    std::string output(QProcess& process) {
        EXPECT_TRUE(world.settle([&] { return process.state() == QProcess::NotRunning; }));
        EXPECT_EQ(process.exitCode(), 0);
        return process.readAllStandardOutput().toStdString();
    }
    std::string pasteWithXclip(const QString& target = "UTF8_STRING") {
        return output(run("xclip", {"-selection", "clipboard", "-o", "-t", target}));
    }
    std::string pasteWithXsel() { return output(run("xsel", {"--clipboard", "--output"})); }
    static std::string megabytes(std::size_t count) {
        std::string text;
        text.reserve(count << 20U);
        for (int line = 0; text.size() < count << 20U; ++line) text += "linha " + std::to_string(line) + "\n";
        return text;
    }

private:
    std::vector<std::unique_ptr<QProcess>> processes_;
};

TEST_F(X11PasteboardProgramsTest, ReadsWhatXclipCopied) {
    copyWithXclip("maçã do xclip");
    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "maçã do xclip");

    copyWithXclip(std::string("\x89PNG\r\n\0", 7), "image/png");
    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(pasteboard->data("public.png"), Bytes(std::string("\x89PNG\r\n\0", 7)));
}

TEST_F(X11PasteboardProgramsTest, ReadsWhatXselCopied) {
    copyWithXsel("maçã do xsel");

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "maçã do xsel");
}

TEST_F(X11PasteboardProgramsTest, GivesXclipAndXselWhatWasWritten) {
    write("maçã nossa");

    EXPECT_EQ(pasteWithXclip(), "maçã nossa");
    EXPECT_EQ(pasteWithXclip("text/plain;charset=utf-8"), "maçã nossa");
    EXPECT_EQ(pasteWithXclip("STRING"), "ma\xE7\xE3 nossa");
    EXPECT_EQ(pasteWithXsel(), "maçã nossa");
}

TEST_F(X11PasteboardProgramsTest, TellsXclipItsTargets) {
    write("text");

    EXPECT_EQ(pasteWithXclip("TARGETS"), "TARGETS\nTIMESTAMP\nMULTIPLE\nUTF8_STRING\n"
                                         "text/plain;charset=utf-8\ntext/plain\nSTRING\n");
}

TEST_F(X11PasteboardProgramsTest, MovesEightMegabytesBothWays) {
    const std::string large = megabytes(8);

    copyWithXclip(large);
    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), large);

    write(large + "nossa");
    EXPECT_EQ(pasteWithXclip(), large + "nossa");
    EXPECT_EQ(pasteWithXsel(), large + "nossa");
}

TEST_F(X11PasteboardProgramsTest, MovesEightMegabytesFromXsel) {
    const std::string large = megabytes(8);

    copyWithXsel(large);

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), large);
}

TEST_F(X11PasteboardProgramsTest, KeepsWhatAKilledXclipCopied) {
    QProcess& source = copyWithXclip("sobrevivente");
    ASSERT_TRUE(waitForChange());

    source.kill();

    ASSERT_TRUE(world.settle([&] { return isOurs(); }));
    EXPECT_EQ(pasteWithXclip(), "sobrevivente");
    EXPECT_EQ(pasteWithXsel(), "sobrevivente");
    EXPECT_EQ(pasteboard->changeCount(), 1);
}

TEST_F(X11PasteboardProgramsTest, LeavesClearedWhatXselCleared) {
    copyWithXsel("retirada");
    ASSERT_TRUE(waitForChange());

    (void)output(run("xsel", {"--clipboard", "--clear"}));

    ASSERT_TRUE(waitForChange(2));
    world.advance(1s);
    EXPECT_FALSE(isOurs());
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardProgramsTest, ServesManyXclipsAtOnce) {
    const std::string large = megabytes(1);
    write(large);
    std::vector<QProcess*> readers(20);

    for (auto*& reader : readers)
        reader = &run("xclip", {"-selection", "clipboard", "-o", "-t", "UTF8_STRING"});

    for (auto* reader : readers) EXPECT_EQ(output(*reader), large);
}

TEST_F(X11PasteboardProgramsTest, CapturesEveryXclipOfAQuickSuccession) {
    std::vector<std::string> read;
    const auto changes = pasteboard->onChange([&] { read.push_back(text().value_or("nothing")); });
    std::vector<std::string> copied;

    for (int copy = 0; copy < 30; ++copy) {
        copied.push_back("cópia " + std::to_string(copy));
        copyWithXclip(copied.back());
        ASSERT_TRUE(waitForChange(copy + 1));
    }

    EXPECT_EQ(read, copied);
}

/// Times how long the main loop is kept from its other work.
class LoopStalls {
public:
    explicit LoopStalls(QEventLoop& loop) {
        ticking_.setTimerType(Qt::PreciseTimer);
        ticking_.callOnTimeout(&loop, [this] { tick(); });
        ticking_.start(1ms);
        last_ = now();
    }
    double longest() const { return longest_; }              ///< milliseconds between two ticks
    double longestAtWork() const { return longestAtWork_; }  ///< of them, on the processor

private:
    struct Times {
        double wall;
        double work;
    };
    static double milliseconds(clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }
    static Times now() { return {milliseconds(CLOCK_MONOTONIC), milliseconds(CLOCK_THREAD_CPUTIME_ID)}; }
    void tick() {
        const Times before = std::exchange(last_, now());
        longest_ = std::max(longest_, last_.wall - before.wall);
        longestAtWork_ = std::max(longestAtWork_, last_.work - before.work);
    }

    QTimer ticking_;
    Times last_{};
    double longest_ = 0;
    double longestAtWork_ = 0;
};

/// Figures, not judgements: how long a transfer keeps the main loop from its other work.
class X11PasteboardMeasurement : public X11PasteboardProgramsTest {
protected:
    void measure(const std::string& what, const std::function<bool()>& isDone) {
        QEventLoop loop;
        LoopStalls stalls(loop);
        QTimer others;
        others.callOnTimeout([&] {
            world.time.advance(1ms);
            world.pump();
            if (isDone()) loop.quit();
        });
        others.start(1ms);
        loop.exec();
        std::cout << what << ": longest stall " << stalls.longest() << " ms, " << stalls.longestAtWork()
                  << " ms of it at work\n";
    }
};

TEST_F(X11PasteboardMeasurement, OfEightMegabytesComingIn) {
    const std::string large = megabytes(8);
    copyWithXclip(large);

    measure("8 MB in", [&] { return pasteboard->changeCount() == 1; });

    EXPECT_EQ(pasteboard->data("public.utf8-plain-text"), Bytes(large));
}

TEST_F(X11PasteboardMeasurement, OfEightMegabytesComingInFromXsel) {
    const std::string large = megabytes(8);
    copyWithXsel(large);

    measure("8 MB in from xsel", [&] { return pasteboard->changeCount() == 1; });

    EXPECT_EQ(pasteboard->data("public.utf8-plain-text"), Bytes(large));
}

TEST_F(X11PasteboardMeasurement, OfEightMegabytesGoingOut) {
    const std::string large = megabytes(8);
    write(large);
    QProcess& reader = run("xclip", {"-selection", "clipboard", "-o", "-t", "UTF8_STRING"});

    measure("8 MB out", [&] { return reader.state() == QProcess::NotRunning; });

    EXPECT_EQ(reader.readAllStandardOutput().toStdString(), large);
}
