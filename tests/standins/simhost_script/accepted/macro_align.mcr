macroScript AlignPivots
	category:"My Tools"
	internalCategory:"My Tools"
	buttonText:"Align Pivots"
	tooltip:"Align the pivots of the selection"
	icon:#("Maintoolbar", 12)
	silentErrors:false
(
	local wasOpen = false
	fn pivotsOf nodes = for n in nodes collect n.pivot

	on isEnabled return selection.count > 0
	on isVisible do true
	on isChecked return wasOpen
	on altExecute type do ( print type )
	on execute do
	(
		undo "align" on (
			local target = (pivotsOf selection)[1]
			for n in selection do n.pivot = target
			max zoomext sel all
			wasOpen = not wasOpen
		)
	)
)

macroScript QuickHide category:"My Tools" tooltip:"Hide"
(
	if selection.count != 0 then max hide selection else messageBox "nothing" title:"Hide" beep:false
)
rcMenu quadMore
(
	subMenu "Files" filter:(fn notEmpty = objects.count > 0)
	(
		menuItem mi_save "Save" enabled:true
		separator s1
		menuItem mi_quit "Quit"
	)
	separator sep_a filter:fileFilter
	menuItem mi_about "About..." checked:false
	fn fileFilter = true
	on quadMore open do mi_save.enabled = getSaveRequired()
	on mi_about picked do messageBox "about"
)
