// The persons store at each start: kept when good, put back when damaged.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "data_tree.h"
#include "ranvel/data/storeguard.h"
#include "ranvel/platform/database.h"

using namespace ranvel;
namespace fs = std::filesystem;

namespace {

class StoreGuard : public ::testing::Test {
protected:
    void SetUp() override
    {
        RANVEL_REQUIRE_BUILD_TREE();
        dir = ranvel::testing::DataScratch();
        store = (dir / "RECOS.Dat").string();
        fs::copy_file(ranvel::testing::BuiltTree() / "EPHE/COMMON/RECOS.Dat", store);
    }
    long Persons(const std::string& path) { return Database::Open(path)->OpenTable("Person")->RecordCount(); }
    // Zeros over the middle of the file, as a failed disk or a torn write
    // leaves it.
    void Tear(const std::string& path)
    {
        const auto size = fs::file_size(path);
        std::fstream f(path, std::ios::in | std::ios::out | std::ios::binary);
        f.seekp(static_cast<std::streamoff>(size / 3));
        const std::string zeros(size / 3, '\0');
        f.write(zeros.data(), static_cast<std::streamsize>(zeros.size()));
    }

    fs::path dir;
    std::string store;
};

TEST_F(StoreGuard, AGoodStoreIsKeptBesideItselfInThreeRotatingCopies)
{
    Database::Open(store)->Execute("INSERT INTO Person (Name) VALUES ('first')");
    EXPECT_EQ(GuardStore(store).kind, StoreGuardResult::Kind::Good);
    ASSERT_TRUE(fs::exists(store + ".1"));
    Database::Open(store)->Execute("INSERT INTO Person (Name) VALUES ('second')");
    for (int run = 0; run < 4; ++run) EXPECT_EQ(GuardStore(store).kind, StoreGuardResult::Kind::Good);
    EXPECT_TRUE(fs::exists(store + ".3"));
    EXPECT_FALSE(fs::exists(store + ".4"));
    EXPECT_EQ(Persons(store + ".1"), Persons(store));
}

TEST_F(StoreGuard, ADamagedStoreGetsItsLastGoodCopyBackAndIsSetAside)
{
    Database::Open(store)->Execute("INSERT INTO Person (Name) VALUES ('kept')");
    const long persons = Persons(store);
    GuardStore(store);  // the copy of this start
    Tear(store);
    EXPECT_NE(StoreDamage(store), "");
    const StoreGuardResult r = GuardStore(store);
    EXPECT_EQ(r.kind, StoreGuardResult::Kind::Restored);
    EXPECT_NE(r.message.find("has been put back"), std::string::npos) << r.message;
    EXPECT_EQ(StoreDamage(store), "");
    EXPECT_EQ(Persons(store), persons);
    EXPECT_TRUE(fs::exists(store + ".damaged"));

    // An empty file is no store either; a damaged copy is passed over.
    std::ofstream(store, std::ios::trunc).close();
    Tear(store + ".1");
    fs::copy_file(store + ".damaged", store + ".2", fs::copy_options::overwrite_existing);
    GuardStore(store + ".x");  // nothing there to guard: no copies of it
    const StoreGuardResult empty = GuardStore(store);
    EXPECT_EQ(empty.kind, StoreGuardResult::Kind::Lost) << empty.message;
    EXPECT_NE(empty.message.find("the file is empty"), std::string::npos) << empty.message;
}

TEST_F(StoreGuard, AStoreWithoutItsTablesIsDamagedAndWithoutCopiesLost)
{
    fs::remove(store);
    Database::Create(store)->ExecuteScript("CREATE TABLE Person (Name TEXT);");
    EXPECT_NE(StoreDamage(store).find("no table Country"), std::string::npos);
    const StoreGuardResult r = GuardStore(store);
    EXPECT_EQ(r.kind, StoreGuardResult::Kind::Lost);
    EXPECT_NE(r.message.find("no good copy"), std::string::npos);
    EXPECT_TRUE(fs::exists(store));  // nothing is taken away when nothing can be put back
}

}  // namespace
