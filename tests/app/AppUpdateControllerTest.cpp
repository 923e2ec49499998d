#include "app/AppUpdateController.h"
#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AppUpdateControllerTest : public AppModelFixture {
protected:
    AppUpdateControllerTest() { wantUpdates(true); }

    void wantUpdates(bool want) { system.bundle.setFlag("NettlecapUpdatesEnabled", want); }
    std::unique_ptr<AppUpdateController> makeController() {
        return std::make_unique<AppUpdateController>(system.bundle, system.updaters.maker());
    }
    void makeModel() { model = newModel({.updates = makeController(), .loginItem = nullptr}); }
    FakeSoftwareUpdaterState& updater() { return *system.updaters.made().at(0); }
};

// Whether there are updates.

TEST_F(AppUpdateControllerTest, HasNoUpdaterWhereTheBundleSaysNothingOfUpdates) {
    system.bundle = FakeBundleInfo();

    auto controller = makeController();
    controller->synchronize();
    controller->checkForUpdates();

    EXPECT_THAT(system.updaters.made(), IsEmpty());
    EXPECT_FALSE(controller->canCheckForUpdates());
}

TEST_F(AppUpdateControllerTest, HasNoUpdaterWhereTheBundleWantsNoUpdates) {
    wantUpdates(false);

    const auto controller = makeController();
    controller->synchronize();

    EXPECT_THAT(system.updaters.made(), IsEmpty());
    EXPECT_FALSE(controller->canCheckForUpdates());
}

TEST_F(AppUpdateControllerTest, DoesWithoutAnUpdaterWhereTheSystemHasNone) {
    system.updaters.setAbsent(true);

    for (const auto& maker : {system.updaters.maker(), MakeSoftwareUpdater()}) {
        AppUpdateController controller(system.bundle, maker);
        controller.synchronize();
        controller.checkForUpdates();
        EXPECT_FALSE(controller.canCheckForUpdates());
    }
}

TEST_F(AppUpdateControllerTest, MakesAnUpdaterAndAsksNothingOfItBeforeTheStart) {
    const auto controller = makeController();

    EXPECT_THAT(system.updaters.made(), SizeIs(1));
    EXPECT_THAT(updater().happenings, IsEmpty());
    EXPECT_FALSE(controller->canCheckForUpdates());
}

// Synchronizing.

TEST_F(AppUpdateControllerTest, TurnsTheUpdaterOnAndStartsIt) {
    const auto controller = makeController();

    controller->synchronize();

    EXPECT_THAT(updater().happenings, ElementsAre("checks by itself", "started", "cycle reset"));
    EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(AppUpdateControllerTest, StartsTheUpdaterOnceHoweverOftenItSynchronizes) {
    const auto controller = makeController();
    controller->synchronize();
    updater().happenings.clear();

    controller->synchronize();

    EXPECT_THAT(updater().happenings, ElementsAre("checks by itself", "cycle reset"));
}

TEST_F(AppUpdateControllerTest, AsksAtTheEndWhetherItCanCheck) {
    const auto controller = makeController();
    controller->synchronize();
    updater().canCheckForUpdates = false;  // and nobody is told

    controller->synchronize();

    EXPECT_FALSE(controller->canCheckForUpdates());
}

// Whether it can check.

TEST_F(AppUpdateControllerTest, CanCheckAsLongAsTheUpdaterCan) {
    const auto controller = makeController();

    updater().setCanCheckForUpdates(true);
    EXPECT_TRUE(controller->canCheckForUpdates());

    updater().setCanCheckForUpdates(false);
    EXPECT_FALSE(controller->canCheckForUpdates());
}

TEST_F(AppUpdateControllerTest, TellsOfEachChangeOnce) {
    const auto controller = makeController();
    std::vector<bool> told;
    const auto subscription = controller->onChange([&] { told.push_back(controller->canCheckForUpdates()); });

    updater().setCanCheckForUpdates(true);
    updater().setCanCheckForUpdates(true);
    controller->synchronize();
    updater().setCanCheckForUpdates(false);

    EXPECT_THAT(told, ElementsAre(true, false));
}

// In the model.

TEST_F(AppUpdateControllerTest, IsSynchronizedWhenTheModelStarts) {
    makeModel();
    EXPECT_THAT(updater().happenings, IsEmpty());

    model->start();

    EXPECT_THAT(updater().happenings, ElementsAre("checks by itself", "started", "cycle reset"));
    EXPECT_TRUE(model->updates()->canCheckForUpdates());
}

TEST_F(AppUpdateControllerTest, ChecksForTheUserWheneverItCan) {
    makeModel();
    model->checkForUpdates();
    EXPECT_THAT(updater().happenings, IsEmpty());

    updater().setCanCheckForUpdates(true);
    model->checkForUpdates();
    EXPECT_THAT(updater().happenings, ElementsAre("checked for the user"));

    updater().setCanCheckForUpdates(false);
    model->checkForUpdates();
    EXPECT_THAT(updater().happenings, SizeIs(1));
}

TEST_F(AppUpdateControllerTest, ItsChangesAreChangesOfTheModel) {
    makeModel();
    int changes = 0;
    const auto subscription = model->onChange([&] { ++changes; });

    updater().setCanCheckForUpdates(true);

    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace nettlecap
