// Opens files and addresses with the system's default program for them.
#pragma once

#include <QString>
#include <functional>
#include <utility>

namespace guanchao {

class Shell {
public:
    virtual ~Shell() = default;

    // Returns at once. What can't be opened is told to the receiver, then or later.
    virtual void open(const QString& target) = 0;

    void whenNotOpened(std::function<void(const QString& target)> receiver) {
        notOpened_ = std::move(receiver);
    }

protected:
    void tellNotOpened(const QString& target) const {
        if (notOpened_) {
            notOpened_(target);
        }
    }

private:
    std::function<void(const QString& target)> notOpened_;
};

}  // namespace guanchao
