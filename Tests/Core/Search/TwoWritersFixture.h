#pragma once

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace quib::tests {

/// A store that two stacks write to, and dice for what they do.
class TwoWritersFixture : public testing::Test
{
protected:
    TwoWritersFixture()
    {
        Profile::setRoot(m_folder.path());
        m_preferences = std::make_unique<QBNotesPreferenceManager>();
        QBNotesPreferenceManager::setSharedPreferenceManager(m_preferences.get());
        m_stack.setupStackWithDelegate({});
        m_other.setupStackWithDelegate({});
        EXPECT_FALSE(m_stack.openError().isSet()) << m_stack.openError().localizedDescription().toStdString();
    }
    ~TwoWritersFixture() override
    {
        QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
        Profile::setRoot({});
    }

    [[nodiscard]] NSManagedObjectContext &context() { return *m_stack.managedObjectContext(); }
    int random(int bound) { return static_cast<int>(m_generator() % static_cast<unsigned>(bound)); }
    template <typename List> auto any(const List &list) { return list[random(static_cast<int>(list.size()))]; }

    TestSeed m_seed;
    std::mt19937 m_generator = m_seed.generator();
    TemporaryFolder m_folder;
    std::unique_ptr<QBNotesPreferenceManager> m_preferences;
    QBCoreDataStack m_stack;
    /// Another process, as far as the first stack can tell.
    QBCoreDataStack m_other;
};

} // namespace quib::tests
