#include "platform/linux/LinuxApplication.h"
#include "platform/contracts/ApplicationContract.h"
#include "platform/linux/QtApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>

namespace nettlecap {
namespace {

QIcon iconOfSide(int side) { return QIcon(QPixmap(side, side)); }

class LinuxApplicationTest : public testing::Test {
protected:
    void SetUp() override {
        auto opened = X11Connection::open();
        auto claimed = SingleInstance::claim();
        ASSERT_TRUE(opened && claimed && *claimed);
        connection = std::move(*opened);
        instance = std::move(*claimed);
        bell.emplace(*connection);
        application.emplace(*bell, *instance, [this](const QString& name) { return drawings.value(name); });
    }
    void TearDown() override { QGuiApplication::setWindowIcon({}); }

    static QList<QSize> sizesOfIcon() { return QGuiApplication::windowIcon().availableSizes(); }

    QMap<QString, QIcon> drawings{{"Nettlecap", iconOfSide(48)}, {"clipboard.fill", iconOfSide(16)}};
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<SingleInstance> instance;
    std::optional<X11Bell> bell;
    std::optional<LinuxApplication> application;
};

TEST_F(LinuxApplicationTest, ItsWindowsHaveItsIcon) {
    application->setIcon("Nettlecap", "clipboard.fill");

    EXPECT_EQ(sizesOfIcon(), QList{QSize(48, 48)});
}

TEST_F(LinuxApplicationTest, WithoutThatTheyHaveTheSymbolAndWithoutEitherNone) {
    drawings.remove("Nettlecap");
    application->setIcon("Nettlecap", "clipboard.fill");
    EXPECT_EQ(sizesOfIcon(), QList{QSize(16, 16)});

    drawings.clear();
    application->setIcon("Nettlecap", "clipboard.fill");
    EXPECT_TRUE(QGuiApplication::windowIcon().isNull());
}

/// On the session bus, with somebody else there who activates it.
class LinuxApplicationHarness final : public ApplicationHarness {
public:
    Application& application() override { return *application_; }
    void reopen() override {
        bool isTold = false;
        const auto told = application_->onOpenEvent([&](OpenEvent) { isTold = true; });
        auto activation = QDBusMessage::createMethodCall(
            "com.nettlecap.Nettlecap", "/com/nettlecap/Nettlecap", "org.freedesktop.Application", "Activate");
        activation << QVariantMap();
        QDBusConnection::sessionBus().asyncCall(activation);
        EXPECT_TRUE(runMainLoopUntil([&] { return isTold; }));
    }
    bool endsItself() override {
        QMetaObject::invokeMethod(
            qGuiApp, [this] { application_->terminate(); }, Qt::QueuedConnection);
        return QGuiApplication::exec() == 0;
    }

private:
    std::unique_ptr<X11Connection> connection_ = std::move(*X11Connection::open());
    std::unique_ptr<SingleInstance> instance_ = std::move(*SingleInstance::claim());
    X11Bell bell_{*connection_};
    std::optional<LinuxApplication> application_{std::in_place, bell_, *instance_,
                                                 [](const QString&) { return QIcon(); }};
};

INSTANTIATE_TEST_SUITE_P(Linux, ApplicationContract,
                         testing::Values([]() -> std::unique_ptr<ApplicationHarness> {
                             return std::make_unique<LinuxApplicationHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
