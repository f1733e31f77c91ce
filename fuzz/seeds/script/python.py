#
import maya.cmds as mc
names = [mc.createNode('joint', n='a'), u"b\x41", r'c\n']
mc.setAttr(names[0] + '.t', 1, 2.5, -3, type='double3')
mc.setKeyframe('a', at='tx', t=(1, 10), v=3)
print(mc.getAttr('a.tx'), len(names), True)
mc.xform('a', q=True, ws=True, t=1); mc.file(new=1, f=True)
