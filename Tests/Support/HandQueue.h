#pragma once

#include <Foundation/DispatchQueue.h>

#include <deque>
#include <utility>

namespace quib::tests {

/// A queue that runs its blocks when a test tells it to.
class HandQueue final : public DispatchQueue
{
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("hand"); }
    void async(std::function<void()> block) override { m_blocks.push_back(std::move(block)); }
    void sync(const std::function<void()> &block) override { block(); }
    [[nodiscard]] bool isCurrent() const override { return true; }
    [[nodiscard]] size_t waiting() const { return m_blocks.size(); }
    void run()
    {
        while (!m_blocks.empty()) {
            const auto block = std::move(m_blocks.front());
            m_blocks.pop_front();
            block();
        }
    }

private:
    std::deque<std::function<void()>> m_blocks;
};

} // namespace quib::tests
