#include "telvofm.h"

#include <gtest/gtest.h>

namespace {

TEST(ResultObject, IsBornEmpty)
{
    ResultObject* object = createResultObject();
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(getResultObjectLength(object), 0);
    EXPECT_STREQ(getResultObjectString(object), "");
    destroyResultObject(object);
}

TEST(ResultObject, EachIsItsOwn)
{
    ResultObject* one = createResultObject();
    ResultObject* other = createResultObject();
    EXPECT_NE(one, other);
    destroyResultObject(one);
    EXPECT_EQ(getResultObjectLength(other), 0);
    destroyResultObject(other);
}

TEST(ResultObject, ANullPointerMayBeDestroyed)
{
    destroyResultObject(nullptr);
}

} // namespace
