#pragma once
#include "inode.h"
#include "tab.h"

using INodeTab = Tab<INode*>;

class IInstanceMgr {
  public:
    static IInstanceMgr* GetInstanceMgr();
    virtual ~IInstanceMgr() = default;
    /// All nodes that share the node's object, the node itself included; answers their number.
    virtual unsigned long GetInstances(INode& node, INodeTab& instances) = 0;
};
