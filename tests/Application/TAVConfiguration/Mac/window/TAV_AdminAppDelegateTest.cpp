#include "TAV_AdminAppDelegate.h"

#include <QWidget>

#include <gtest/gtest.h>

TEST(AdminAppDelegate, KnowsNoWindowAtFirst)
{
    EXPECT_EQ(TAV_AdminAppDelegate().window(), nullptr);
}

TEST(AdminAppDelegate, KnowsTheWindowThatItIsGiven)
{
    QWidget window;
    TAV_AdminAppDelegate delegate;

    delegate.setWindow(&window);

    EXPECT_EQ(delegate.window(), &window);
}

TEST(AdminAppDelegate, DoesNothingWhenTheApplicationHasStarted)
{
    QWidget window;
    TAV_AdminAppDelegate delegate;
    delegate.setWindow(&window);

    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(delegate.window(), &window);
    EXPECT_FALSE(window.isVisible());
}
