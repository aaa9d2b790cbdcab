#ifndef KORD_LIST_H
#define KORD_LIST_H

#include <cstddef>
#include <iterator>
#include <new>
#include <type_traits>

/// A node of an `os_list`: links first, then the element by value.
template <class T>
struct os_list_node {
    os_list_node* next;
    os_list_node* prev;
    T value;
};

/// Where a list may get its nodes from instead of the global heap.
class os_list_allocator {
  public:
    /// A block for `count` nodes of `size` bytes for `list`, aligned as for `operator new`; throws if there is none.
    virtual void* allocate(std::size_t size, unsigned int count, const void* list) = 0;
    /// Takes back a block that `allocate` gave.
    virtual void deallocate(void* node) noexcept = 0;

  protected:
    ~os_list_allocator() = default;
};

template <class T>
class os_list;

/// A read-only bidirectional iterator over an `os_list`; stays valid until its node is erased.
template <class T, class Offset>
class os_list_const_iterator {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    os_list_const_iterator() noexcept = default;
    reference operator*() const noexcept { return node_->value; }
    pointer operator->() const noexcept { return &node_->value; }
    os_list_const_iterator& operator++() noexcept {
        node_ = node_->next;
        return *this;
    }
    os_list_const_iterator& operator--() noexcept {
        node_ = node_->prev;
        return *this;
    }
    os_list_const_iterator operator++(int) noexcept {
        const os_list_const_iterator old = *this;
        ++*this;
        return old;
    }
    os_list_const_iterator operator--(int) noexcept {
        const os_list_const_iterator old = *this;
        --*this;
        return old;
    }
    friend bool operator==(const os_list_const_iterator& a, const os_list_const_iterator& b) noexcept {
        return a.node_ == b.node_;
    }
    friend bool operator!=(const os_list_const_iterator& a, const os_list_const_iterator& b) noexcept {
        return !(a == b);
    }

  private:
    friend class os_list<T>;
    explicit os_list_const_iterator(os_list_node<T>* node) noexcept : node_(node) {}

    os_list_node<T>* node_ = nullptr;
    [[maybe_unused]] Offset offset_ = 0; // 0 in every iterator that a list hands out
};

/// A doubly linked list whose nodes form a ring through a sentinel that carries no element.
///
/// Inserting and erasing anywhere is constant and leaves iterators to other elements valid. Every member that makes a
/// node may throw what the allocation throws (`std::bad_alloc` from the global heap) and then leaves the list as it
/// was. Elements are values that need no destruction and are assigned without failing.
template <class T>
class os_list {
    static_assert(std::is_trivially_destructible_v<T> && std::is_nothrow_copy_constructible_v<T> &&
                  std::is_nothrow_copy_assignable_v<T>);

  public:
    using value_type = T;
    using const_iterator = os_list_const_iterator<T, int>;
    using iterator = const_iterator;

    /// Two words that go together: the allocator, null for the global heap, and a word for its owner's use.
    struct allocator_handle {
        os_list_allocator* object = nullptr;
        void* companion = nullptr;
    };

    /// An empty list; allocates the sentinel.
    os_list() : os_list(allocator_handle{}) {}
    explicit os_list(allocator_handle allocator) : allocator_(allocator), sentinel_(obtain()), count_(0) {
        sentinel_->next = sentinel_->prev = sentinel_;
    }
    /// A list of copies, with the allocator of the other. Linear.
    os_list(const os_list& other) : os_list(other.allocator_) { *this = other; }
    ~os_list() {
        for (node* at = sentinel_->next; at != sentinel_;) {
            node* const next = at->next;
            release(at);
            at = next;
        }
        release(sentinel_);
    }

    /// Assigns element by element as far as both go, then appends copies or erases the rest. Linear. Nodes that are
    /// missing are obtained before anything changes. Keeps its own allocator.
    os_list& operator=(const os_list& other) {
        if (this == &other) return *this;
        const unsigned int common = count_ < other.count_ ? count_ : other.count_;
        const node* from = other.sentinel_->next;
        node* to = sentinel_->next;
        for (unsigned int n = common; n != 0; --n, to = to->next) from = from->next;
        erase_from(to);
        append(from, other.sentinel_);
        from = other.sentinel_->next;
        to = sentinel_->next;
        for (unsigned int n = common; n != 0; --n, from = from->next, to = to->next) to->value = from->value;
        return *this;
    }

    /// Puts a copy of `value` before `position` and returns where it stands.
    const_iterator insert(const_iterator position, const T& value) {
        node* const next = position.node_;
        node* const fresh = ::new (static_cast<void*>(obtain())) node{next, next->prev, value};
        next->prev->next = fresh;
        next->prev = fresh;
        ++count_;
        return const_iterator(fresh);
    }
    /// Removes the element at `position`, which must not be `end()`, and returns the position of the next one.
    const_iterator erase(const_iterator position) noexcept {
        node* const old = position.node_;
        node* const next = old->next;
        old->prev->next = next;
        next->prev = old->prev;
        --count_;
        release(old);
        return const_iterator(next);
    }

    const_iterator begin() const noexcept { return const_iterator(sentinel_->next); }
    const_iterator end() const noexcept { return const_iterator(sentinel_); }
    unsigned int size() const noexcept { return count_; }
    bool empty() const noexcept { return count_ == 0; }

  private:
    using node = os_list_node<T>;

    /// Erases again what was appended after `last`, unless `last` has moved on.
    struct rollback {
        os_list& list;
        node* last;
        ~rollback() { list.erase_from(last->next); }
    };

    /// Appends copies of the elements [from, end) of another list: all of them or, when it throws, none.
    void append(const node* from, const node* end) {
        rollback added{*this, sentinel_->prev};
        for (; from != end; from = from->next) insert(this->end(), from->value);
        added.last = sentinel_->prev;
    }
    /// Erases `first` and what follows it.
    void erase_from(node* first) noexcept {
        while (first != sentinel_) first = erase(const_iterator(first)).node_;
    }

    node* obtain() {
        return static_cast<node*>(allocator_.object == nullptr ? ::operator new(sizeof(node))
                                                               : allocator_.object->allocate(sizeof(node), 1, this));
    }
    void release(node* old) noexcept {
        if (allocator_.object == nullptr) {
            ::operator delete(static_cast<void*>(old));
        } else {
            allocator_.object->deallocate(old);
        }
    }

    allocator_handle allocator_;
    node* sentinel_;
    unsigned int count_;
};

#endif
