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
    const Signal<>& activated() const { return activated_; }

public Q_SLOTS:
    void Activate(const QVariantMap&) { activated_.emit(); }
    /// There is nothing to open; whoever asks wants to see the program.
    void Open(const QStringList&, const QVariantMap&) { activated_.emit(); }
    void ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such action"));
    }

private:
    Signal<> activated_;
};

SingleInstance::SingleInstance() : object_(std::make_unique<BusObject>()) {}

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

Subscription SingleInstance::onActivate(Task handler) const {
    return object_->activated().subscribe(std::move(handler));
}

}  // namespace nettlecap

#include "SingleInstance.moc"
