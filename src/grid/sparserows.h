// SparseRows: values at row numbers, most rows empty, where opening or
// removing a row shifts every row after it - in O(log n), whatever the row.
//
// The stored rows form a treap ordered by row number; each node records how
// many empty rows lie between it and the stored row before it, and each
// subtree the rows it spans. A row's number is never stored, so shifting the
// rows after a point changes one gap, not every row.
#ifndef VYR_GRID_SPARSEROWS_H
#define VYR_GRID_SPARSEROWS_H

#include <cstdint>
#include <functional>
#include <random>
#include <utility>

namespace vyr {

template <class Value>
class SparseRows
{
public:
    SparseRows() = default;
    ~SparseRows() { destroy(m_root); }
    SparseRows(const SparseRows &) = delete;
    SparseRows &operator=(const SparseRows &) = delete;

    // The value stored at `row`, or null.
    Value *find(long row) const
    {
        Node *node = m_root;
        while (node) {
            const long position = span(node->left) + node->gap;
            if (row < span(node->left)) {
                node = node->left;
            } else if (row == position) {
                return &node->value;
            } else if (row < position) {
                return nullptr;
            } else {
                row -= position + 1;
                node = node->right;
            }
        }
        return nullptr;
    }

    // The value at `row`, made empty-valued first when there is none.
    Value &findOrCreate(long row)
    {
        if (Value *found = find(row))
            return *found;
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        const long gap = row - span(before);
        Node *node = new Node(gap, m_random());
        if (after)
            addToFirstGap(after, -(gap + 1));
        m_root = merge(merge(before, node), after);
        ++m_count;
        return node->value;
    }

    // An empty row opens at `row`: the rows from it on move down one.
    void insertRow(long row)
    {
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        if (after)
            addToFirstGap(after, 1);
        m_root = merge(before, after);
    }

    // The row goes, stored or not: the rows after it move up one.
    void removeRow(long row)
    {
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        if (after && first(after)->gap == row - span(before)) {
            Node *gone = popFirst(after);
            if (after)
                addToFirstGap(after, gone->gap);
            gone->left = gone->right = nullptr;
            destroy(gone);
            --m_count;
        } else if (after) {
            addToFirstGap(after, -1);
        }
        m_root = merge(before, after);
    }

    // Every stored row in order: visit(row, value).
    void forEach(const std::function<void(long, Value &)> &visit)
    {
        long next = 0;
        walk(m_root, next, visit);
    }

    std::size_t storedRows() const { return m_count; }

private:
    struct Node
    {
        Node(long gapBefore, std::uint32_t weight)
            : gap(gapBefore)
            , priority(weight)
        {
            span = gap + 1;
        }
        Value value{};
        long gap; // empty rows between the previous stored row and this one
        long span; // rows this subtree covers, its gaps included
        std::uint32_t priority;
        Node *left = nullptr;
        Node *right = nullptr;
    };

    static long span(const Node *node) { return node ? node->span : 0; }
    static void update(Node *node) { node->span = span(node->left) + node->gap + 1 + span(node->right); }

    // Rows before `row` to `before`, the others to `after`, whose first node's
    // gap still counts from the end of `before`.
    static void split(Node *node, long row, Node *&before, Node *&after)
    {
        if (!node) {
            before = after = nullptr;
            return;
        }
        const long position = span(node->left) + node->gap;
        if (position < row) {
            split(node->right, row - position - 1, node->right, after);
            before = node;
        } else {
            split(node->left, row, before, node->left);
            after = node;
        }
        update(node);
    }

    static Node *merge(Node *left, Node *right)
    {
        if (!left || !right)
            return left ? left : right;
        if (left->priority > right->priority) {
            left->right = merge(left->right, right);
            update(left);
            return left;
        }
        right->left = merge(left, right->left);
        update(right);
        return right;
    }

    static Node *first(Node *node)
    {
        while (node->left)
            node = node->left;
        return node;
    }

    static void addToFirstGap(Node *node, long delta)
    {
        if (node->left)
            addToFirstGap(node->left, delta);
        else
            node->gap += delta;
        update(node);
    }

    static Node *popFirst(Node *&node)
    {
        if (!node->left) {
            Node *gone = node;
            node = node->right;
            return gone;
        }
        Node *gone = popFirst(node->left);
        update(node);
        return gone;
    }

    static void walk(Node *node, long &next, const std::function<void(long, Value &)> &visit)
    {
        if (!node)
            return;
        walk(node->left, next, visit);
        next += node->gap;
        visit(next, node->value);
        ++next;
        walk(node->right, next, visit);
    }

    static void destroy(Node *node)
    {
        if (!node)
            return;
        destroy(node->left);
        destroy(node->right);
        delete node;
    }

    Node *m_root = nullptr;
    std::size_t m_count = 0;
    std::minstd_rand m_random{20261123};
};

} // namespace vyr

#endif // VYR_GRID_SPARSEROWS_H
