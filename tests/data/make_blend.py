# Writes tests/data/set.blend, set.fbx and set.dae with Blender (Debian's
# `blender`), run as
#   blender -b --factory-startup --python tests/data/make_blend.py -- tests/data/set
# a floor, a red crate, a spot light "key" and a camera "shot". Of the .blend
# only the scene and what it uses are written, uncompressed, so that the file
# stays small; the FBX is Blender's own binary FBX, in centimetres; the Collada
# file is in metres.
import math
import sys

import bpy

out = sys.argv[sys.argv.index("--") + 1]
for thing in list(bpy.data.objects):
    bpy.data.objects.remove(thing, do_unlink=True)
scene = bpy.context.scene

bpy.ops.mesh.primitive_plane_add(size=10, location=(0, 0, 0))
bpy.context.object.name = "floor"
bpy.ops.mesh.primitive_cube_add(size=2, location=(2, 0, 1))
bpy.context.object.name = "crate"
red = bpy.data.materials.new("red")
red.diffuse_color = (0.8, 0.2, 0.1, 1)
bpy.context.object.data.materials.append(red)

key = bpy.data.lights.new("key", type="SPOT")
key.energy = 100
key.spot_size = math.radians(50)
key_object = bpy.data.objects.new("key", key)
key_object.location = (0, 0, 4)
scene.collection.objects.link(key_object)

shot = bpy.data.cameras.new("shot")
shot_object = bpy.data.objects.new("shot", shot)
shot_object.location = (0, -10, 3)
shot_object.rotation_euler = (math.radians(80), 0, 0)
scene.collection.objects.link(shot_object)
scene.camera = shot_object

bpy.data.libraries.write(out + ".blend", {scene}, compress=False)
bpy.ops.export_scene.fbx(filepath=out + ".fbx", object_types={"MESH", "LIGHT", "CAMERA"},
                         bake_anim=False)
bpy.ops.wm.collada_export(filepath=out + ".dae")
