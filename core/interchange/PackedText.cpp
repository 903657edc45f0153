#include "core/interchange/PackedText.h"

PackedText::~PackedText()
{
    Retire();
}

void PackedText::Retire()
{
    // The block's own reference is still held here, so this never frees it.
    if (m_spareRefs != 0)
        m_block.data_ptr().d_ptr()->ref_.fetchAndAddOrdered(-m_spareRefs);
    m_spareRefs = 0;
    m_block = QString();
}

void PackedText::NewBlock()
{
    Retire();
    m_block.reserve(BlockSize);
    // Written through this pointer only, past every value handed out: the values never
    // change their part of the block in place while it is shared.
    m_free = m_block.data_ptr().data();
    m_left = m_block.capacity();
    // Every value takes at least two characters, its NUL included.
    m_spareRefs = int(m_left / 2);
    m_block.data_ptr().d_ptr()->ref_.fetchAndAddRelaxed(m_spareRefs);
}
