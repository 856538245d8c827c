#pragma once

#include <Store/NSPersistentStoreCoordinator.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

/// The current object model, read from its file in the source tree.
inline std::shared_ptr<const NSManagedObjectModel> currentModel(int version = 3)
{
    using namespace Qt::StringLiterals;
    const QString name = version == 1 ? u"Model"_s : u"Model %1"_s.arg(version);
    NSError error;
    auto model = NSManagedObjectModel::modelWithContentsOfFile(
        QStringLiteral(QUIB_SOURCE_DIR "/Resources/Model/Model.momd/") + name + u".mom"_s, &error);
    EXPECT_TRUE(model) << error.localizedDescription().toStdString();
    return model;
}
