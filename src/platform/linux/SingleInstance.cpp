#include "platform/linux/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QVariantMap>

namespace nettlecap {

namespace {

constexpr const char* busName = "com.nettlecap.Nettlecap";
constexpr const char* objectPath = "/com/nettlecap/Nettlecap";
constexpr const char* interfaceName = "org.freedesktop.Application";

/// A first process that has just taken its name may still be reading its history.
constexpr int activationPatience = 10'000;  // milliseconds

/// Whether the bus started this process, as the D-Bus Specification has it say
/// ("Message Bus Starting Services").
bool takeWordOfBus() {
    bool wasStarted = false;
    for (const char* variable : {"DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE"}) {
        wasStarted = wasStarted || qEnvironmentVariableIsSet(variable);
        qunsetenv(variable);
    }
    return wasStarted;
}

Result<Done> activateOther(QDBusConnection& bus) {
    auto call = QDBusMessage::createMethodCall(busName, objectPath, interfaceName, "Activate");
    call << QVariantMap();
    const QDBusMessage answer = bus.call(call, QDBus::Block, activationPatience);
    if (answer.type() == QDBusMessage::ReplyMessage) return Done();
    return Failure{answer.errorMessage().toStdString()};
}

}  // namespace

/// The methods are those of the Desktop Entry Specification, "D-Bus Activation".
class SingleInstance::BusObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit BusObject(bool isStartedByBus) : next_(isStartedByBus ? OpenEvent::open : OpenEvent::reopen) {}

    const Signal<OpenEvent>& opened() const { return opened_; }

public Q_SLOTS:
    void Activate(const QVariantMap&) { open(); }
    /// There is nothing to open; whoever asks wants to see the program.
    void Open(const QStringList&, const QVariantMap&) { open(); }
    void ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such action"));
    }

private:
    void open() { opened_.emit(std::exchange(next_, OpenEvent::reopen)); }

    OpenEvent next_;
    Signal<OpenEvent> opened_;
};

SingleInstance::SingleInstance() : object_(std::make_unique<BusObject>(takeWordOfBus())) {}

SingleInstance::~SingleInstance() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(busName);
    bus.unregisterObject(objectPath);
}

Result<std::unique_ptr<SingleInstance>> SingleInstance::claim() {
    auto instance = std::unique_ptr<SingleInstance>(new SingleInstance);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return instance;
    // The object comes first, so that it is there for whoever sees the name.
    bus.registerObject(objectPath, instance->object_.get(), QDBusConnection::ExportAllSlots);
    if (bus.registerService(busName)) return instance;
    const auto owner = bus.interface()->serviceOwner(busName);
    if (!owner.isValid()) return instance;  // the bus refuses the name to everybody
    instance.reset();
    if (const auto activated = activateOther(bus); !activated) return Failure{activated.description()};
    return std::unique_ptr<SingleInstance>();
}

Subscription SingleInstance::onOpenEvent(std::function<void(OpenEvent)> handler) const {
    return object_->opened().subscribe(std::move(handler));
}

}  // namespace nettlecap

#include "SingleInstance.moc"
