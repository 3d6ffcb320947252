// SparseRows: values at row numbers, most rows empty, where opening or
// removing a row shifts every row after it - in O(log n), whatever the row.
//
// The stored rows form a treap ordered by row number; each node records how
// many empty rows lie between it and the stored row before it, and each
// subtree the rows it spans. A row's number is never stored, so shifting the
// rows after a point changes one gap, not every row. The nodes are also
// linked in row order, so that reading rows in order goes from one to the
// next without walking the tree.
#ifndef VYR_GRID_SPARSEROWS_H
#define VYR_GRID_SPARSEROWS_H

#include <cstdint>
#include <functional>
#include <new>
#include <random>
#include <utility>
#include <vector>

namespace vyr {

template <class Value>
class SparseRows
{
public:
    SparseRows() = default;
    ~SparseRows() { release(m_root); }
    SparseRows(const SparseRows &) = delete;
    SparseRows &operator=(const SparseRows &) = delete;

    // The value stored at `row`, or null. Reading rows in order costs
    // constant time: the last row found is remembered, and the next stored
    // rows are reached from it by their links.
    Value *find(long row) const
    {
        if (m_cursor.node && row >= m_cursor.number) {
            for (int step = 0; step < kCursorSteps; ++step) {
                if (row == m_cursor.number)
                    return &m_cursor.node->value;
                Node *next = m_cursor.node->next;
                if (!next || m_cursor.number + 1 + next->gap > row)
                    return nullptr;
                m_cursor = {next, m_cursor.number + 1 + next->gap};
            }
        }
        return seek(row);
    }

    // The value at `row`, made empty-valued first when there is none.
    Value &findOrCreate(long row)
    {
        if (Value *found = find(row))
            return *found;
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        forgetCursor();
        const long gap = row - span(before);
        Node *node = m_nodes.make(gap, m_random());
        if (after)
            addToFirstGap(after, -(gap + 1));
        link(before, node);
        node->next = after ? first(after) : nullptr;
        m_root = merge(merge(before, node), after);
        ++m_count;
        // The row is written next, cell after cell: keep the cursor on it.
        m_cursor = {node, row};
        return node->value;
    }

    // An empty row opens at `row`: the rows from it on move down one.
    void insertRow(long row)
    {
        forgetCursor();
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
        forgetCursor();
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        if (after && first(after)->gap == row - span(before)) {
            Node *gone = popFirst(after);
            if (after)
                addToFirstGap(after, gone->gap);
            link(before, gone->next);
            m_nodes.recycle(gone);
            --m_count;
        } else if (after) {
            addToFirstGap(after, -1);
        }
        m_root = merge(before, after);
    }

    // `count` empty rows open at `row`, in one step.
    void insertRows(long row, long count)
    {
        if (count <= 0)
            return;
        forgetCursor();
        Node *before = nullptr;
        Node *after = nullptr;
        split(m_root, row, before, after);
        if (after)
            addToFirstGap(after, count);
        m_root = merge(before, after);
    }

    // The rows from `row` to `row` + `count` go, stored or not, in one step.
    void removeRows(long row, long count)
    {
        if (count <= 0)
            return;
        forgetCursor();
        Node *before = nullptr;
        Node *rest = nullptr;
        split(m_root, row, before, rest);
        Node *middle = nullptr;
        Node *after = nullptr;
        // The rest counts its rows from the end of `before`.
        split(rest, row + count - span(before), middle, after);
        // The first row after the gone ones moves up by `count`; its gap
        // counted from the end of `middle` and now counts from `before`.
        if (after)
            addToFirstGap(after, span(middle) - count);
        if (middle)
            link(before, after ? first(after) : nullptr);
        recycleAll(middle);
        m_root = merge(before, after);
    }

    // The stored rows from `first` on, in order, until visit(row, value)
    // answers false; rows before `first` cost nothing.
    void forEachFrom(long first, const std::function<bool(long, Value &)> &visit)
    {
        walkFrom(m_root, 0, first, visit);
    }

    // The stored rows up to `last`, backwards, until visit answers false.
    void forEachBackFrom(long last, const std::function<bool(long, Value &)> &visit)
    {
        walkBackFrom(m_root, 0, last, visit);
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
        // The links first: a walk reads them before the value, and memory
        // read upwards is what the processor fetches ahead.
        long gap; // empty rows between the previous stored row and this one
        long span; // rows this subtree covers, its gaps included
        Node *left = nullptr;
        Node *right = nullptr;
        Node *next = nullptr; // the next stored row
        std::uint32_t priority;
        Value value{};
    };

    // The last stored row found.
    struct Cursor
    {
        Node *node = nullptr;
        long number = 0;
    };
    static constexpr int kCursorSteps = 8;

    void forgetCursor() { m_cursor.node = nullptr; }

    Value *seek(long row) const
    {
        m_cursor.node = nullptr;
        Node *node = m_root;
        long start = 0;
        while (node) {
            const long leftEnd = start + span(node->left);
            const long position = leftEnd + node->gap;
            if (row < leftEnd) {
                node = node->left;
            } else if (row == position) {
                m_cursor = {node, position};
                return &node->value;
            } else if (row < position) {
                return nullptr;
            } else {
                start = position + 1;
                node = node->right;
            }
        }
        return nullptr;
    }

    // Makes `next` follow the last row of `before` in row order.
    static void link(Node *before, Node *next)
    {
        if (before)
            last(before)->next = next;
    }

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

    static Node *last(Node *node)
    {
        while (node->right)
            node = node->right;
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

    static bool walkFrom(Node *node, long start, long first, const std::function<bool(long, Value &)> &visit)
    {
        if (!node)
            return true;
        const long leftEnd = start + span(node->left);
        const long position = leftEnd + node->gap;
        if (first < leftEnd && !walkFrom(node->left, start, first, visit))
            return false;
        if (position >= first && !visit(position, node->value))
            return false;
        return walkFrom(node->right, position + 1, first, visit);
    }

    static bool walkBackFrom(Node *node, long start, long last, const std::function<bool(long, Value &)> &visit)
    {
        if (!node)
            return true;
        const long position = start + span(node->left) + node->gap;
        if (position < last && !walkBackFrom(node->right, position + 1, last, visit))
            return false;
        if (position <= last && !visit(position, node->value))
            return false;
        return walkBackFrom(node->left, start, last, visit);
    }

    // Nodes come from blocks of their own, handed out in order, so a store
    // filled row by row lies in memory row by row whatever state the heap is
    // in, and reading it in order stays cache friendly.
    class NodePool
    {
    public:
        NodePool() = default;
        ~NodePool()
        {
            for (unsigned char *block : m_blocks)
                ::operator delete(block, std::align_val_t(alignof(Node)));
        }
        NodePool(const NodePool &) = delete;
        NodePool &operator=(const NodePool &) = delete;

        Node *make(long gap, std::uint32_t priority)
        {
            void *place;
            if (!m_free.empty()) {
                place = m_free.back();
                m_free.pop_back();
            } else {
                if (m_blocks.empty() || m_used == kBlockNodes) {
                    m_blocks.push_back(static_cast<unsigned char *>(
                        ::operator new(sizeof(Node) * kBlockNodes, std::align_val_t(alignof(Node)))));
                    m_used = 0;
                }
                place = m_blocks.back() + sizeof(Node) * m_used++;
            }
            return new (place) Node(gap, priority);
        }

        void recycle(Node *node)
        {
            node->~Node();
            m_free.push_back(node);
        }

    private:
        static constexpr std::size_t kBlockNodes = 256;
        std::vector<unsigned char *> m_blocks;
        std::size_t m_used = 0;
        std::vector<Node *> m_free;
    };

    void recycleAll(Node *node)
    {
        while (node) {
            recycleAll(node->left);
            Node *right = node->right;
            m_nodes.recycle(node);
            --m_count;
            node = right;
        }
    }

    // Ends the values' lives; the pool frees the memory.
    static void release(Node *node)
    {
        while (node) {
            release(node->left);
            Node *right = node->right;
            node->~Node();
            node = right;
        }
    }

    NodePool m_nodes;
    Node *m_root = nullptr;
    std::size_t m_count = 0;
    mutable Cursor m_cursor;
    std::minstd_rand m_random{20261123};
};

} // namespace vyr

#endif // VYR_GRID_SPARSEROWS_H
