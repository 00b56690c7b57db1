#include "Platform/Foundation/NSBundle.h"
#include "Platform/Services/Consent/UMPConsentForm.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/Services/Consent/UMPConsentInformation.h"
#include "Platform/Services/Consent/UMPError.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISwitch.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RawServer.h"
#include "Tests/Support/RecordingHost.h"
#include "Tests/Support/ReferenceServer.h"
#include "Tests/Support/ScratchFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <optional>

namespace anadrome {

namespace {

using namespace testing_support;

constexpr const char* saysNotRequired = R"({"required": false})";
constexpr const char* saysRequired =
    R"({"required": true, "message": {"en": "May we?", "ja": "よろしいですか"},
    "purposes": [{"id": "fit", "name": {"en": "Ads that fit"}}, {"id": "count", "name": {"en": "Counting"}}]})";

class UMPConsentTest : public testing::Test {
protected:
    UMPConsentTest() { m_host.show(m_root); }
    ~UMPConsentTest() override {
        m_host.show(nullptr);
        Deployment::setCurrent({});
    }

    /// Whether the update went well.
    static bool update(UMPConsentInformation& information, const std::string& answer) {
        RawServer server({httpAnswer("200 OK", "", answer)});
        return updateFrom(server.address(), information);
    }
    static bool updateFrom(const std::string& endpoint, UMPConsentInformation& information) {
        Deployment deployment;
        deployment.consentEndpoint = endpoint;
        Deployment::setCurrent(std::move(deployment));
        std::optional<bool> succeeded;
        information.requestConsentInfoUpdateWithParameters({},
                                                           [&](const auto& error) { succeeded = !error; });
        EXPECT_FALSE(succeeded) << "never before the call returns";
        EXPECT_TRUE(runEventLoopUntil([&] { return succeeded.has_value(); }));
        return succeeded.value_or(false);
    }

    void loadForm(UIViewController& controller) {
        m_ends.clear();
        UMPConsentForm::loadAndPresentIfRequiredFromViewController(
            controller, [this](const auto& error) { m_ends.push_back(error ? error->code() : 0); });
        EXPECT_TRUE(m_ends.empty());
    }
    std::vector<long> endsOfForm() {
        EXPECT_TRUE(runEventLoopUntil([&] { return !m_ends.empty(); }));
        return m_ends;
    }
    std::shared_ptr<UMPConsentFormViewController> form() const {
        return std::dynamic_pointer_cast<UMPConsentFormViewController>(m_root->presentedViewController());
    }
    using Button = std::shared_ptr<UIButton> UMPConsentFormViewController::Views::*;
    void tap(Button button) const { (form()->views().*button)->tap(); }

    const ScratchFolder m_folder;
    const Environment m_state{"XDG_STATE_HOME", m_folder.path().string()};
    const Environment m_locale{"LC_ALL", "C"};
    RecordingHost m_host;
    const std::shared_ptr<UIViewController> m_root = std::make_shared<UIViewController>();
    std::vector<long> m_ends;
};

} // namespace

TEST_F(UMPConsentTest, TheStateFollowsTheServerUntilTheFormIsAnsweredAndOutlivesTheProgram) {
    struct Case {
        const char* answer;
        bool succeeds;
        UMPConsentStatus status;
        bool canRequestAds;
        bool mayPersonalise;
    };
    using enum UMPConsentStatus;
    // What copies values level by level overflows its stack here.
    const std::string levels(120'000, '['), ends(120'000, ']');
    const std::string deepMessage = R"({"required": true, "message": )" + levels + ends + "}";
    const std::string deepPurposes = R"({"required": true, "purposes": )" + levels + ends + "}";
    const Case cases[] = {
        {"", false, unknown, false, false},
        {saysNotRequired, true, notRequired, true, true},
        {"{", false, notRequired, true, true},
        {saysRequired, true, required, false, false},
        {"[]", false, required, false, false},
        {R"({"required": 1})", false, required, false, false},
        {R"({"required": true, "message": {"ja": "日本語だけ"}})", false, required, false, false},
        {R"({"required": true, "purposes": [{"id": "x"}]})", false, required, false, false},
        {R"({"required": true, "purposes": {}})", false, required, false, false},
        {deepMessage.c_str(), false, required, false, false},
        {deepPurposes.c_str(), false, required, false, false},
    };
    for (const Case& each : cases) {
        UMPConsentInformation session;
        EXPECT_FALSE(session.canRequestAds()) << "not before an update is requested";
        EXPECT_EQ(update(session, each.answer), each.succeeds) << each.answer;
        EXPECT_EQ(session.consentStatus(), each.status) << each.answer;
        EXPECT_EQ(session.canRequestAds(), each.canRequestAds) << each.answer;
        EXPECT_EQ(session.mayPersonaliseAds(), each.mayPersonalise) << each.answer;
    }
    for (const bool accepts : {false, true}) {
        UMPConsentInformation().takeAnswers({accepts, {{"fit", accepts}}});
        for (const char* answer : {saysNotRequired, saysRequired, ""}) {
            UMPConsentInformation session;
            update(session, answer);
            EXPECT_EQ(session.consentStatus(), obtained);
            EXPECT_TRUE(session.canRequestAds());
            EXPECT_EQ(session.mayPersonaliseAds(), accepts);
        }
    }
}

TEST_F(UMPConsentTest, WhatIsStoredIsThereAtOnceAndWithoutAServerNobodyIsAsked) {
    UMPConsentInformation().takeAnswers({true, {}});
    UMPConsentInformation session;
    std::string reason;
    session.requestConsentInfoUpdateWithParameters(
        {}, [&](const auto& error) { reason = error->localizedDescription(); });
    EXPECT_TRUE(session.canRequestAds());
    EXPECT_TRUE(runEventLoopUntil([&] { return !reason.empty(); }));
    EXPECT_EQ(reason, "No consent server is configured.");
    UMPRequestParameters young;
    young.setTagForUnderAgeOfConsent(true);
    session.requestConsentInfoUpdateWithParameters(young, [](const auto&) {});
    EXPECT_FALSE(session.mayPersonaliseAds());
    QCoreApplication::processEvents();
}

TEST_F(UMPConsentTest, TheReferenceServerAsksInTheUsersLanguage) {
    const Environment locale("LC_ALL", "ja_JP.UTF-8"), language("LANGUAGE", "ja");
    ReferenceServer server;
    UMPConsentInformation information;
    ASSERT_TRUE(updateFrom(server.address("/consent"), information));
    EXPECT_EQ(information.consentStatus(), UMPConsentStatus::required);
    ASSERT_EQ(information.question()->purposes.size(), 3U);
    EXPECT_EQ(information.question()->purposes[1],
              (UMPConsentPurpose{"selection", "興味に合わせて広告を選ぶ"}));
}

TEST_F(UMPConsentTest, ADamagedStateCountsAsNone) {
    std::filesystem::create_directory(m_folder.path() / "anadrome");
    for (const char* content : {"", "{", "[]", R"({"status": "3"})", R"({"status": 4})", R"({"status": -1})",
                                R"({"status": 1e99})"}) {
        std::ofstream(m_folder.path() / "anadrome/consent.json") << content;
        EXPECT_EQ(UMPConsentState::stored().status, UMPConsentStatus::unknown) << content;
    }
    std::ofstream(m_folder.path() / "anadrome/consent.json")
        << R"({"status": 3, "allAccepted": 1, "purposes": {"a": true, "b": "true"}})";
    EXPECT_EQ(UMPConsentState::stored().status, UMPConsentStatus::obtained);
    EXPECT_EQ(UMPConsentState::stored().answers, (UMPConsentAnswers{false, {{"a", true}}}));
}

TEST_F(UMPConsentTest, TheUserAnswersTheFormInThreeWays) {
    using Views = UMPConsentFormViewController::Views;
    struct Case {
        std::vector<Button> taps;
        bool isFitSwitched;
        UMPConsentAnswers answers;
    };
    const Case cases[] = {
        {{&Views::accept}, false, {true, {{"fit", true}, {"count", true}}}},
        {{&Views::refuse}, false, {false, {{"fit", false}, {"count", false}}}},
        {{&Views::manage, &Views::confirm}, true, {false, {{"fit", true}, {"count", false}}}},
    };
    for (const Case& each : cases) {
        std::filesystem::remove_all(m_folder.path() / "anadrome");
        ASSERT_TRUE(update(UMPConsentInformation::sharedInstance(), saysRequired));
        loadForm(*m_root);
        ASSERT_TRUE(form());
        EXPECT_EQ(form()->views().message->text(), "May we?");
        EXPECT_EQ(form()->views().rows.at(1).label->text(), "Counting");
        tap(&Views::confirm);
        ASSERT_TRUE(form()) << "hidden until the user wants to choose";
        tap(each.taps.front());
        if (each.isFitSwitched)
            form()->views().rows.at(0).acceptance->tap();
        if (form())
            tap(each.taps.back());
        EXPECT_EQ(UMPConsentState::stored().answers, each.answers) << each.answers.isAllAccepted;
        EXPECT_EQ(endsOfForm(), std::vector<long>{0});
        loadForm(*m_root);
        EXPECT_FALSE(form()) << "answered";
        EXPECT_EQ(endsOfForm(), std::vector<long>{0});
    }
}

TEST_F(UMPConsentTest, AFormThatCannotBeShownIsAnErrorAndOneThatGoesUnansweredIsNoConsent) {
    UMPConsentInformation& information = UMPConsentInformation::sharedInstance();
    EXPECT_FALSE(update(information, "{"));
    loadForm(*m_root);
    EXPECT_EQ(endsOfForm(), std::vector<long>{UMPFormErrorCodeUnavailable});
    ASSERT_TRUE(update(information, R"({"required": true})"));
    loadForm(*std::make_shared<UIViewController>());
    EXPECT_EQ(endsOfForm(), std::vector<long>{UMPFormErrorCodeInvalidViewController});
    loadForm(*m_root);
    ASSERT_TRUE(form());
    EXPECT_EQ(form()->views().message->text(), NSLocalizedString("ConsentMessage"));
    EXPECT_TRUE(form()->views().manage->isHidden()) << "there is nothing to choose from";
    m_root->dismissViewControllerAnimated(false);
    EXPECT_EQ(endsOfForm(), std::vector<long>{0});
    EXPECT_FALSE(information.canRequestAds());
}

} // namespace anadrome
