#include "utils/observable.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace Color;

struct Counter : Observer
{
    void notify() override { ++count; }
    int count = 0;
};

TEST(Observable, tellsEveryObserverOnce)
{
    Observable observable;
    Counter first, second;
    observable.add(&first);
    observable.add(&second);
    observable.add(&second);
    observable.notifyAll();
    EXPECT_EQ(first.count, 1);
    EXPECT_EQ(second.count, 1);
}

TEST(Observable, removedObserverIsToldNoMore)
{
    Observable observable;
    Counter first, second;
    observable.add(&first);
    observable.add(&second);
    observable.remove(&first);
    observable.notifyAll();
    EXPECT_EQ(first.count, 0);
    EXPECT_EQ(second.count, 1);
}

TEST(Observable, unknownObserverCannotBeRemoved)
{
    Observable observable;
    Counter counter;
    observable.add(&counter);
    observable.remove(&counter);
    EXPECT_EQ(failureOf([&] { observable.remove(&counter); }),
              (Failure{0x1020006, "COLOR:UTILS:PREFERENCES", "Observer not found."}));
}

TEST(Observable, nullObserverIsIgnored)
{
    Observable observable;
    EXPECT_NO_THROW(observable.remove(nullptr));
    EXPECT_NO_THROW(observable.add(nullptr));
    EXPECT_NO_THROW(observable.notifyAll());
}

TEST(Observable, observersMayRemoveEachOtherWhileTheyAreTold)
{
    struct Remover : Observer
    {
        void notify() override
        {
            ++count;
            observable->remove(this);
            observable->remove(other);
        }
        Observable* observable = nullptr;
        Observer* other = nullptr;
        int count = 0;
    };
    Observable observable;
    Remover both[2];
    Counter bystander;
    for (Remover& remover : both) {
        remover.observable = &observable;
        remover.other = &both[&remover == &both[0] ? 1 : 0];
        observable.add(&remover);
    }
    observable.add(&bystander);
    observable.notifyAll();
    EXPECT_EQ(both[0].count + both[1].count, 1);
    EXPECT_EQ(bystander.count, 1);
}

} // namespace
